#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/utility/Backoff.h>

#include "scan/launch/ScannerProcess.h"

namespace zetaudiopluginhostui {

/// The wait for a scanner's port asks these for the time and for the scanner's end. Tests hand in their own.
struct PortWait
{
    using Clock = std::chrono::steady_clock;
    using Pause = std::function<void()>;

    std::function<Clock::time_point()> now = [] {
        return Clock::now() + zetcore::debug::FaultDelay("host.port-wait");
    };
    std::function<std::optional<ScannerProcessEnd>(ScannerProcess)> findEnd = FindScannerProcessEnd;
    /// Called once for each wait. Its result makes one pause each time that it is called.
    std::function<Pause()> startPauses = [] { return Pause(zetcore::utility::Backoff()); };
};

} // namespace zetaudiopluginhostui
