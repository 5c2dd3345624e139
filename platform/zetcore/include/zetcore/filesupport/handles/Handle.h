#pragma once

#include <cstdint>
#include <utility>

#include <zetcore/Export.h>

namespace zetcore::filesupport {

/// Owns a kernel handle of Windows (a HANDLE). Both of the system's "no handle" values count as none.
class Handle
{
  public:
    Handle() = default;
    explicit Handle(void* openHandle) noexcept : handle(IsNone(openHandle) ? nullptr : openHandle) {}
    Handle(Handle&& other) noexcept : handle(std::exchange(other.handle, nullptr)) {}
    Handle& operator=(Handle&& other) noexcept
    {
        std::swap(handle, other.handle);
        return *this;
    }
    ~Handle() { Close(); }

    void* Get() const noexcept { return handle; }
    bool IsOpen() const noexcept { return handle != nullptr; }
    ZETCORE_API void Close() noexcept;

  private:
    // INVALID_HANDLE_VALUE is -1 in a pointer's clothes.
    static bool IsNone(void* value) noexcept { return reinterpret_cast<std::intptr_t>(value) == -1; }

    void* handle = nullptr;
};

} // namespace zetcore::filesupport
