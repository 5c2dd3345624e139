#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "supervisor/process/Interrupt.h"
#include "supervisor/workers/ProcessEnd.h"

namespace zetaudiofilterscan {

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
        /// The interrupt is set.
        Interrupted,
        DeadlinePassed,
    };

    /// Starts it; it waits for its first message. Throws `std::system_error`.
    explicit WorkerProcess(OutputHandler output);
    /// Kills it, with every process of its group, and takes it off the system's list.
    ~WorkerProcess();
    WorkerProcess(const WorkerProcess&) = delete;
    WorkerProcess& operator=(const WorkerProcess&) = delete;

    /// Queues a message and sends what can be sent; the rest goes out while waiting.
    void Send(std::string_view message);
    /// Output is handed on meanwhile. Throws `std::length_error` when the worker announces a message that is
    /// too long.
    Event Wait(const Interrupt& interrupt, std::chrono::steady_clock::time_point deadline);
    std::string TakeMessage();
    /// True when the process has ended. It does not wait.
    bool HasEnded() const;
    /// Waits for its end and nothing else; true when it has ended.
    bool WaitForEnd(std::chrono::steady_clock::time_point deadline) const;

    /// Kills what is left of it and its group, hands on its last output, and says how the process ended: by
    /// itself, when it had ended before the call. Call once, last.
    ProcessEnd Finish();

    /// The words of its page; never to be trusted.
    std::uint32_t Entity() const noexcept;
    std::uint32_t Phase() const noexcept;

  private:
    struct System;
    std::unique_ptr<System> system;
};

} // namespace zetaudiofilterscan
