#pragma once

#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>

#include "commands/HostSession.h"
#include "commands/ScanReport.h"

namespace zetaudiopluginmanager {

/// Scans exactly these modules and says what came of it since `before`. Main thread.
ScanReport RunScan(HostSession& session, const std::vector<zetaudiofilterhost::PluginLocator>& modules,
                   bool useSeparateProcess, const RegistrySnapshot& before);

/// Why the report is not complete, if it is not.
void SayWhatIsMissing(const ScanReport& report);

/// The exit status of the report; the session's own status where the report is complete.
ExitStatus StatusOf(const HostSession& session, const ScanReport& report);

} // namespace zetaudiopluginmanager
