#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "supervisor/process/Interrupt.h"
#include "supervisor/workers/ProcessEnd.h"

namespace zetaudiofilterscan {

class WorkerSpawner;

/// One worker: a process of this same program, the channel to it, its shared page and its output. Owned by
/// the scanning thread, on which all of it is called; that must be the process's main thread, because the
/// system ends a worker with the thread that started it.
class WorkerProcess
{
  public:
    /// Given what the worker's plug-ins write to standard output and error.
    using OutputHandler = std::function<void(std::string_view)>;

    enum class Event
    {
        /// A message has come: `TakeMessage`.
        Message,
        /// The process has ended: `Finish` says how.
        Ended,
        /// It has closed its end of the channel, or the channel broke.
        ChannelClosed,
    };

    /// As many can be waited for at once.
    static constexpr std::size_t mostAtOnce = 20;

    /// Starts it; it waits for its first message. Throws `std::system_error`.
    WorkerProcess(WorkerSpawner& spawner, OutputHandler output);
    /// Kills it, with every process of its group, and takes it off the system's list.
    ~WorkerProcess();
    WorkerProcess(const WorkerProcess&) = delete;
    WorkerProcess& operator=(const WorkerProcess&) = delete;

    /// Queues a message and sends what can be sent; the rest goes out while waiting.
    void Send(std::string_view message);
    /// Waits until something has happened to one of them, the interrupt is set, or the deadline has come. It
    /// may return earlier. Output is handed on meanwhile. For `lookAround` it looks without sleeping, because
    /// to wake a sleeping thread can take longer than to load a plug-in.
    static void WaitForAny(std::span<WorkerProcess* const> processes, const Interrupt& interrupt,
                           std::chrono::steady_clock::time_point deadline,
                           std::chrono::microseconds lookAround);
    /// Reads what has come since the last wait, for a caller that was busy meanwhile. It does not wait.
    void ReadNow();
    /// The next thing that has happened to it; it does not wait. To be called until the result is empty
    /// before the next wait. Throws `std::length_error` when the worker announces a message that is too long.
    std::optional<Event> TakeEvent();
    std::string TakeMessage();

    /// Begins to kill it and its group, and does not wait for that.
    void BeginKill() noexcept;
    /// Kills what is left of it and its group, hands on its last output, and says how the process ended: by
    /// itself, when it had ended before the call. Later calls say the same.
    ProcessEnd Finish();

    /// The words of its page; never to be trusted.
    std::uint32_t Entity() const noexcept;
    std::uint32_t Phase() const noexcept;
    /// Bytes of memory that the process has of its own; 0 when the system does not tell.
    std::uint64_t MemoryInUse() const;

  private:
    /// The last output is read so often at most, because somebody may go on writing for ever. It is more than
    /// a pipe holds.
    static constexpr int mostBuffersLeft = 32;

    struct System;
    std::unique_ptr<System> system;
};

} // namespace zetaudiofilterscan
