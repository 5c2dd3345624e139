#pragma once

#include <utility>

#include <windows.h>

namespace zetcore::filesupport {

/// Owns a kernel handle. Both of Windows' "no handle" values count as none.
class Handle
{
  public:
    Handle() = default;
    explicit Handle(HANDLE openHandle) noexcept
        : handle(openHandle == INVALID_HANDLE_VALUE ? nullptr : openHandle)
    {}
    Handle(Handle&& other) noexcept : handle(std::exchange(other.handle, nullptr)) {}
    Handle& operator=(Handle&& other) noexcept
    {
        std::swap(handle, other.handle);
        return *this;
    }
    ~Handle() { Close(); }

    HANDLE Get() const noexcept { return handle; }
    bool IsOpen() const noexcept { return handle != nullptr; }
    void Close() noexcept
    {
        if (const HANDLE closing = std::exchange(handle, nullptr))
            ::CloseHandle(closing);
    }

  private:
    HANDLE handle = nullptr;
};

} // namespace zetcore::filesupport
