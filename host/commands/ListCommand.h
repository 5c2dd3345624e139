#pragma once

#include <iosfwd>
#include <string>

#include "commands/HostSession.h"
#include "commands/PluginRow.h"

namespace zetaudiopluginmanager {

struct ListOptions
{
    bool json = false;
    std::string filter;
    RowChoice choice = RowChoice::All;
};

ExitStatus RunListCommand(HostSession& session, const ListOptions& options, std::ostream& output);

} // namespace zetaudiopluginmanager
