#pragma once

#include <optional>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>

#include "commands/HostSession.h"
#include "commands/ScanReport.h"

namespace zetaudiopluginmanager {

/// Scans exactly these modules and says what came of it; nothing when the scanner process could not be
/// started. Saves the banned list when it has changed. Main thread.
std::optional<ScanReport> RunScan(HostSession& session,
                                  const std::vector<zetaudiofilterhost::PluginLocator>& modules,
                                  bool useSeparateProcess);

/// Why the report is not complete, if it is not.
void SayWhatIsMissing(const ScanReport& report);

} // namespace zetaudiopluginmanager
