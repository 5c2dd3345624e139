#include "WorkerPrivileges.h"

namespace zetaudiofilterscan {

// The job that the supervisor puts the worker into bounds its processes; handles have no bound here.
std::string LimitResources()
{
    return {};
}

// Only a firewall rule, which takes an administrator, or an app container, in which few plug-ins load, could.
std::string RefuseNetwork()
{
    return "the network cannot be refused: this system does not let a process refuse it to itself";
}

} // namespace zetaudiofilterscan
