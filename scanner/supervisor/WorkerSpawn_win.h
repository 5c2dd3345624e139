#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include <windows.h>

#include "WorkerPage.h"

namespace zetaudiofilterscan {

/// A handle that closes itself. Null is none.
class OwnedHandle
{
  public:
    OwnedHandle() = default;
    explicit OwnedHandle(HANDLE handle) noexcept : value(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
    ~OwnedHandle() { Reset(); }
    OwnedHandle(OwnedHandle&& other) noexcept : value(std::exchange(other.value, nullptr)) {}
    OwnedHandle& operator=(OwnedHandle&& other) noexcept
    {
        std::swap(value, other.value);
        return *this;
    }

    HANDLE Get() const noexcept { return value; }
    explicit operator bool() const noexcept { return value != nullptr; }
    void Reset() noexcept
    {
        if (value)
            ::CloseHandle(std::exchange(value, nullptr));
    }

  private:
    HANDLE value = nullptr;
};

struct UnmapPage
{
    void operator()(WorkerPage* page) const noexcept { ::UnmapViewOfFile(page); }
};

struct SpawnedWorker
{
    /// Kills all of its processes when it is closed.
    OwnedHandle job;
    OwnedHandle process;
    /// Our ends of named pipes, for overlapped reading and (the channel) writing.
    OwnedHandle channel;
    OwnedHandle output;
    std::unique_ptr<WorkerPage, UnmapPage> page;
};

/// Starts this program as a worker, without a window, in a job of its own, inheriting nothing but standard
/// input (empty), output, error, the channel and the page. Throws `std::system_error`.
SpawnedWorker SpawnWorker();

} // namespace zetaudiofilterscan
