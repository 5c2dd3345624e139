#include "commands/ListCommand.h"

#include <ostream>

#include <zetcore/string/Utf.h>

#include "output/JsonOutput.h"
#include "output/PluginTable.h"
#include "terminal/Console.h"

namespace zetaudiopluginmanager {

ExitStatus RunListCommand(HostSession& session, const ListOptions& options, std::ostream& output)
{
    const auto rows = FilterRows(CollectRows(session.Registry(), session.Banned()),
                                 zetcore::string::UTF8to16(options.filter), options.choice);
    if (options.json)
        output << FormatRowsAsJson(rows);
    else
        output << FormatPluginTable(rows, {ConsoleWidth(), ConsoleShowsColour()}, options.choice);
    return session.Status();
}

} // namespace zetaudiopluginmanager
