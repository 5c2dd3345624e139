#include "commands/Version.h"

#include <ZetCommit.h>

namespace zetaudiopluginmanager {

std::string VersionNumber()
{
    return ZET_VERSION;
}

std::string VersionLine()
{
    return WriteVersionLine(ZET_VERSION, ZET_COMMIT);
}

std::string WriteVersionLine(std::string_view number, std::string_view commit)
{
    std::string line = "zetaudiopluginmanager " + std::string(number);
    if (!commit.empty())
        line += " (" + std::string(commit) + ")";
    return line;
}

} // namespace zetaudiopluginmanager
