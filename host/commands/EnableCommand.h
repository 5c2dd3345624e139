#pragma once

#include <string>
#include <vector>

#include "commands/HostSession.h"

namespace zetaudiopluginmanager {

struct EnableOptions
{
    /// The plug-ins become this.
    bool enabled = true;
    bool all = false;
    std::vector<std::string> files;
};

/// Changes nothing when one of the files is not a known, working plug-in.
ExitStatus RunEnableCommand(HostSession& session, const EnableOptions& options);

} // namespace zetaudiopluginmanager
