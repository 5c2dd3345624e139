#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "session/HostSession.h"

namespace zetaudiopluginmanager {

struct ScanOptions
{
    bool rescan = false;
    bool inProcess = false;
    bool json = false;
    /// "json" for a line for each plug-in file as the scan gets on. Needs `json`.
    std::string progress;
    /// Plug-ins, and folders of plug-ins, to scan. When empty, all registered folders are scanned.
    std::vector<std::string> files;
};

/// Scans and prints what the scan has found and changed.
ExitStatus RunScanCommand(HostSession& session, const ScanOptions& options, std::ostream& output);

struct ReloadOptions
{
    bool all = false;
    std::vector<std::string> files;
};

/// Takes banned plug-ins out of the banned list and scans them again. A plug-in whose file is gone leaves the
/// registry, too.
ExitStatus RunReloadCommand(HostSession& session, const ReloadOptions& options, std::ostream& output);

} // namespace zetaudiopluginmanager
