#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "commands/HostSession.h"

namespace zetaudiopluginmanager {

struct ScanOptions
{
    bool rescan = false;
    bool inProcess = false;
    bool json = false;
    /// Scan just these, and what lies in those that are folders; all registered folders when empty.
    std::vector<std::string> files;
};

ExitStatus RunScanCommand(HostSession& session, const ScanOptions& options, std::ostream& output);

struct ReloadOptions
{
    bool all = false;
    std::vector<std::string> files;
};

/// Leaves the banned list and is scanned again; one whose file is gone leaves both lists.
ExitStatus RunReloadCommand(HostSession& session, const ReloadOptions& options, std::ostream& output);

} // namespace zetaudiopluginmanager
