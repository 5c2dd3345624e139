#pragma once

namespace zetaudiopluginhostui {

/// A scanner process that dies is replaced as often as it takes, unless the host sets this entry of the debug
/// database to a number. When so many restarts in a row were followed by no plug-in that was reported, the
/// scan gives up (`ScanEnd::How::GaveUp`). An entry that is not set, and 0, set no limit.
inline constexpr char restartLimitKey[] = "zetaudiopluginhostui.MostFruitlessRestarts";

/// The scanner process ends a plug-in that takes longer than this entry of its debug database says, in
/// seconds (60). It reads the entry from `DebugDatabase.txt` in the preferences folder. The environment
/// variable `ZET_DEBUG_DATABASE`, which it gets from the host, goes before that file.
inline constexpr char entityTimeoutKey[] = "zetaudiofilterscan.EntityTimeoutSeconds";

/// The scanner process loads so many plug-ins at the same time, each in a process of its own, as this entry
/// of its debug database says: from 1 to `mostWorkers`. Without it, the scanner chooses: twice the number of
/// processors, at least 4, and less when memory is short.
inline constexpr char workersKey[] = "zetaudiofilterscan.Workers";
inline constexpr unsigned mostWorkers = 16;

} // namespace zetaudiopluginhostui
