#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/utility/Backoff.h>

#include "scan/ScannerProcess.h"

namespace zetaudiopluginhostui {

/// Time, and the scanner's end, as the wait for its port sees them; tests hand in their own.
struct PortWait
{
    using Clock = std::chrono::steady_clock;
    using Pause = std::function<void()>;

    std::function<Clock::time_point()> now = [] {
        return Clock::now() + zetcore::debug::FaultDelay("host.port-wait");
    };
    std::function<std::optional<ScannerProcessEnd>(ScannerProcess)> findEnd = FindScannerProcessEnd;
    /// Makes the pauses of one wait.
    std::function<Pause()> startPauses = [] { return Pause(zetcore::utility::Backoff()); };
};

} // namespace zetaudiopluginhostui
