#pragma once

#include <cstdint>
#include <string_view>
#include <system_error>
#include <utility>

#include <zetcore/Export.h>

namespace zetcore::filesupport {

/// Owns a kernel handle of Windows (a HANDLE), or nothing. Windows has two values for "no handle", and both
/// count as nothing.
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
    /// The caller owns it from now on.
    void* Release() noexcept { return std::exchange(handle, nullptr); }
    ZETCORE_API void Close() noexcept;
    /// Writes everything to a file, in several writes where one takes only a part.
    ZETCORE_API std::error_code WriteWhole(std::string_view bytes) const;

  private:
    // The other value for "no handle", INVALID_HANDLE_VALUE, is the number -1 as a pointer.
    static bool IsNone(void* value) noexcept { return reinterpret_cast<std::intptr_t>(value) == -1; }

    void* handle = nullptr;
};

} // namespace zetcore::filesupport
