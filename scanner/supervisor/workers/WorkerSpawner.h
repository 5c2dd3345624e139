#pragma once

#include <memory>

namespace zetaudiofilterscan {

/// A worker that was just started: what this system has for its process, channel, output and page.
struct SpawnedWorker;

/// Starts worker processes. On POSIX systems those after the first few are copies of a process that has begun
/// already and loads nothing itself, because a copy costs much less than a new program: a scan in which
/// hundreds of plug-ins crash needs a thousand workers. Where that process cannot be had, or does not answer
/// in time, every worker is a new program. Scanning thread, which must be the process's main thread: the
/// system ends a worker with the thread that started it.
class WorkerSpawner
{
  public:
    WorkerSpawner();
    ~WorkerSpawner();
    WorkerSpawner(const WorkerSpawner&) = delete;
    WorkerSpawner& operator=(const WorkerSpawner&) = delete;

    /// Throws `std::system_error`.
    SpawnedWorker Spawn();
    /// Ends what is there to start workers faster. The next worker is started as the first was.
    void End() noexcept;

  private:
    struct System;
    std::unique_ptr<System> system;
};

} // namespace zetaudiofilterscan
