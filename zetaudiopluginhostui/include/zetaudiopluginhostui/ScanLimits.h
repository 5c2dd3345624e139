#pragma once

namespace zetaudiopluginhostui {

/// A scanner process that dies is replaced as often as it takes. A host that would rather give up on one that
/// never gets on sets this entry of the debug database to a number: when so many restarts in a row were
/// followed by no plug-in that was reported, the scan ends as if it had finished (`ScanEnd::How::GaveUp`).
/// Not set, or 0: no limit.
inline constexpr char mostFruitlessRestarts[] = "zetaudiopluginhostui.MostFruitlessRestarts";

/// The scanner process ends a plug-in that takes longer than this entry of its debug database says, in
/// seconds (60). It reads the entry from `DebugDatabase.txt` in the preferences folder, and before that from
/// the environment variable `ZET_DEBUG_DATABASE` that it gets from the host.
inline constexpr char entityTimeoutSeconds[] = "zetaudiofilterscan.EntityTimeoutSeconds";

} // namespace zetaudiopluginhostui
