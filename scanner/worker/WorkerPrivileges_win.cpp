#include "WorkerPrivileges.h"

namespace zetaudiofilterscan {

// A firewall rule takes an administrator, and few plug-ins load in an app container. There is no third way.
std::optional<zetcore::utility::Reason> RefuseNetwork()
{
    return zetcore::utility::Reason{
        "the network cannot be refused: this system does not let a process refuse it to itself"};
}

std::optional<zetcore::utility::Reason> RefuseWriting(const std::vector<std::string>&, int)
{
    return zetcore::utility::Reason{
        "writing to files cannot be refused: few plug-ins load in a process that this system lets do less"};
}

std::optional<zetcore::utility::Reason> RefuseTruncation()
{
    return std::nullopt;
}

std::optional<zetcore::utility::Reason> RefuseToEnd(std::uint64_t)
{
    return std::nullopt;
}

} // namespace zetaudiofilterscan
