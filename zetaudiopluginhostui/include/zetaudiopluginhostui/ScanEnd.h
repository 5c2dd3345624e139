#pragma once

#include <string>

namespace zetaudiopluginhostui {

/// How a scan of plug-ins ended.
struct ScanEnd
{
    enum class How
    {
        /// Everything was scanned, or was passed over for a reason that its record or its ban holds.
        Done,
        /// The user cancelled it.
        Cancelled,
        /// The scanner process could not be started: nothing was scanned.
        NotStarted,
        /// It stopped before everything was scanned (see ScanLimits.h), or an exception ended it.
        GaveUp,
    };

    How how = How::Done;
    /// UTF-8, for people: why it did not start, or why it gave up. Empty after the other ends.
    std::string reason;

    bool operator==(const ScanEnd&) const = default;
};

} // namespace zetaudiopluginhostui
