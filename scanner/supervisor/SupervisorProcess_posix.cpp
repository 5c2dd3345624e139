#include "SupervisorProcess.h"

#include <csignal>

#include <unistd.h>

namespace zetaudiofilterscan {

void SetUpSupervisorProcess()
{
    for (const int signal : {SIGINT, SIGHUP, SIGQUIT, SIGPIPE})
        std::signal(signal, SIG_IGN);
    // A host that ignores it would make the workers vanish before their end was seen.
    std::signal(SIGCHLD, SIG_DFL);
}

std::string OwnProcessNumber()
{
    return std::to_string(::getpid());
}

void EndSupervisorProcess(int exitCode)
{
    ::_exit(exitCode);
}

} // namespace zetaudiofilterscan
