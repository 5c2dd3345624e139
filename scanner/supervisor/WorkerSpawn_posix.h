#pragma once

#include <memory>
#include <utility>

#include <sys/types.h>

#include "WorkerPage.h"

namespace zetaudiofilterscan {

/// A descriptor that closes itself. -1 is none.
class Descriptor
{
  public:
    Descriptor() = default;
    explicit Descriptor(int descriptor) noexcept : value(descriptor) {}
    ~Descriptor() { Reset(); }
    Descriptor(Descriptor&& other) noexcept : value(std::exchange(other.value, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(value, other.value);
        return *this;
    }

    int Get() const noexcept { return value; }
    int Release() noexcept { return std::exchange(value, -1); }
    void Reset() noexcept;

  private:
    int value = -1;
};

struct UnmapPage
{
    void operator()(WorkerPage* page) const noexcept;
};

struct SpawnedWorker
{
    /// Also the number of its group and session.
    pid_t pid = -1;
    /// Readable when the process has ended; none where the system has no such thing.
    Descriptor process;
    Descriptor channel;
    Descriptor output;
    std::unique_ptr<WorkerPage, UnmapPage> page;
};

/// Starts this program as a worker, in a session of its own, with default signals and nothing open but
/// standard input (empty), output, error, the channel and the page. Our ends do not block. Throws
/// `std::system_error`.
SpawnedWorker SpawnWorker();

} // namespace zetaudiofilterscan
