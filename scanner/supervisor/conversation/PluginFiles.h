#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "WorkerMessages.h"

namespace zetaudiofilterscan {

class ScanLog;

/// Decides, by the debug database, what plug-ins may write to. The log is told what cannot be had. Scanning
/// thread.
void DecidePluginFiles(WorkerSettings& settings, ScanLog& log);

/// Makes the home of plug-ins (`PluginHome`) for this scanner, and removes those that are left of others. A
/// scanner that loads nothing needs none. A failure is noted in the log. Scanning thread.
void MakePluginFiles(ScanLog& log);

/// Removes the home, as far as no worker writes to it at the moment.
void RemovePluginFiles() noexcept;

/// The absolute paths of a list that is separated by `:`. Others are passed over.
std::vector<std::wstring> ReadWritableList(std::string_view list);

} // namespace zetaudiofilterscan
