#include "WorkerPrivileges.h"

namespace zetaudiofilterscan {

// Only a firewall rule, which takes an administrator, or an app container, in which few plug-ins load, could.
std::optional<zetcore::utility::Reason> RefuseNetwork()
{
    return zetcore::utility::Reason{
        "the network cannot be refused: this system does not let a process refuse it to itself"};
}

} // namespace zetaudiofilterscan
