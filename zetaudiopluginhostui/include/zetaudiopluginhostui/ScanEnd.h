#pragma once

#include <string>

namespace zetaudiopluginhostui {

/// How a scan of plug-ins ended.
struct ScanEnd
{
    enum class How
    {
        /// Every plug-in was scanned, or was passed over for a reason that its record or its ban holds.
        Done,
        /// The user cancelled the scan.
        Cancelled,
        /// The scanner process could not be started. Nothing was scanned.
        NotStarted,
        /// The scan stopped before every plug-in was scanned (see ScanLimits.h), or an exception ended it.
        GaveUp,
    };

    How how = How::Done;
    /// Why the scan did not start or gave up, for people (UTF-8). Empty for the other ends.
    std::string reason;

    bool operator==(const ScanEnd&) const = default;
};

} // namespace zetaudiopluginhostui
