#pragma once

#include <functional>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>

#include "scan/ScanReport.h"
#include "session/HostSession.h"

namespace zetaudiopluginmanager {

/// Called when a scan comes to a plug-in.
using ReachPlugin = std::function<void(const zetaudiofilterhost::PluginLocator&)>;

/// Scans exactly these modules and reports what has changed since `before`. Main thread.
ScanReport RunScan(HostSession& session, const std::vector<zetaudiofilterhost::PluginLocator>& modules,
                   bool useSeparateProcess, const RegistrySnapshot& before, const ReachPlugin& reach = {});

/// Says on standard error why the report is not complete. Says nothing about a complete one.
void SayWhatIsMissing(const ScanReport& report);

/// The exit status that fits the report. A complete report leaves it to the session's own status.
ExitStatus StatusOf(const HostSession& session, const ScanReport& report);

} // namespace zetaudiopluginmanager
