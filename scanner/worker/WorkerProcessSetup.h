#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace zetaudiofilterscan {

/// Makes the calling process fit for loading plug-ins: it ends with its parent (at once, if that is gone
/// already), cannot gain privileges, leaves no core dump, shows no crash dialog, and its output comes line by
/// line. What its plug-ins have started ends with it. When the supervisor is gone, too, the
/// plug-ins' home is removed (`PluginHome`).
void SetUpWorkerProcess(std::uint64_t parentProcess);

/// Chooses the display that the plug-ins of this process find. Without a display in the environment, or when
/// it is to be hidden, the environment names one that nobody serves: plug-ins that find no name try the first
/// display of the machine, which may be another program's. Call it while the process has one thread. Windows
/// has one display, which cannot be hidden.
void ChooseDisplay(bool hide);

/// Sets variables of the environment. Call it while the process has one thread.
void SetVariables(const std::vector<std::pair<std::string, std::string>>& variables);

/// Ends the process without running what plug-ins have left to run.
[[noreturn]] void EndWorkerProcess(int exitCode);

} // namespace zetaudiofilterscan
