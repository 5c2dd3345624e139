#pragma once

namespace zetaudiofilterscan {

/// Chooses the display that the plug-ins of this process find. Without a display in the environment, or when
/// it is to be hidden, the environment names one that nobody serves: plug-ins that find no name try the first
/// display of the machine, which may be another program's. Call it while the process has one thread. Windows
/// has one display, which cannot be hidden.
void ChooseDisplay(bool hide);

} // namespace zetaudiofilterscan
