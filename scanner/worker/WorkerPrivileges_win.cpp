#include "WorkerPrivileges.h"

namespace zetaudiofilterscan {

// A firewall rule takes an administrator, and few plug-ins load in an app container. There is no third way.
std::optional<zetcore::utility::Reason> RefuseNetwork()
{
    return zetcore::utility::Reason{
        "the network cannot be refused: this system does not let a process refuse it to itself"};
}

} // namespace zetaudiofilterscan
