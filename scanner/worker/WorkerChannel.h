#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "WorkerArguments.h"
#include "WorkerPage.h"

namespace zetaudiofilterscan {

/// The worker's end of what it shares with its supervisor. Waits, in reading and in writing. One thread.
class WorkerChannel
{
  public:
    /// Takes over the handles, and keeps them from programs that a plug-in may start. Throws
    /// `std::system_error` when they are not what they should be.
    explicit WorkerChannel(const WorkerArguments& arguments);
    ~WorkerChannel();
    WorkerChannel(const WorkerChannel&) = delete;
    WorkerChannel& operator=(const WorkerChannel&) = delete;

    /// The next message; nothing when the supervisor is gone or the channel is broken.
    std::optional<std::string> Read();
    /// False when it could not be sent.
    bool Write(std::string_view message);
    /// False when a plug-in has closed the channel's handle, or put something else in its place.
    bool IsIntact() const;
    WorkerPage& Page() noexcept;

  private:
    struct System;
    std::unique_ptr<System> system;
};

} // namespace zetaudiofilterscan
