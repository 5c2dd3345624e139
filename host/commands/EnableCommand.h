#pragma once

#include <string>
#include <vector>

#include "session/HostSession.h"

namespace zetaudiopluginmanager {

struct EnableOptions
{
    /// False: the plug-ins are disabled.
    bool enabled = true;
    bool all = false;
    std::vector<std::string> files;
};

/// Enables or disables plug-ins. When one of the files is not a known, working plug-in, nothing changes.
ExitStatus RunEnableCommand(HostSession& session, const EnableOptions& options);

} // namespace zetaudiopluginmanager
