#pragma once

#include <chrono>
#include <functional>

#include <zetcore/debug/FaultPoint.h>
#include <zetcore/threads/Backoff.h>

namespace zetaudiopluginhostui {

/// Time as the wait for the scanner's port sees it; tests hand in their own.
struct PortWait
{
    using Clock = std::chrono::steady_clock;
    using Pause = std::function<void()>;

    std::function<Clock::time_point()> now = [] {
        return Clock::now() + zetcore::debug::FaultDelay("host.port-wait");
    };
    /// Makes the pauses of one wait.
    std::function<Pause()> startPauses = [] { return Pause(zetcore::threads::Backoff()); };
};

} // namespace zetaudiopluginhostui
