#pragma once

namespace zetaudiopluginhostui {

/// A scanner process that dies is replaced as often as it takes. A host that would rather give up on one that
/// never gets on sets this entry of the debug database to a number: when so many restarts in a row were
/// followed by no plug-in that was reported, the scan ends as if it had finished (`ScanEnd::How::GaveUp`).
/// Not set, or 0: no limit.
inline constexpr char mostFruitlessRestarts[] = "zetaudiopluginhostui.MostFruitlessRestarts";

} // namespace zetaudiopluginhostui
