#pragma once

#include <iosfwd>
#include <string>

#include "output/PluginRow.h"
#include "session/HostSession.h"

namespace zetaudiopluginmanager {

struct ListOptions
{
    bool json = false;
    std::string filter;
    RowChoice choice = RowChoice::All;
};

/// Prints the plug-ins as a table or as JSON.
ExitStatus RunListCommand(HostSession& session, const ListOptions& options, std::ostream& output);

} // namespace zetaudiopluginmanager
