#include "SupervisorProcess.h"

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace zetaudiofilterscan {

void SetUpSupervisorProcess()
{
    // With the last, a file that may grow no more is an error of the write and not the end.
    for (const int signal : {SIGINT, SIGHUP, SIGQUIT, SIGPIPE, SIGXFSZ})
        std::signal(signal, SIG_IGN);
    // A host that ignores it would make the workers vanish before their end was seen.
    std::signal(SIGCHLD, SIG_DFL);
    // Where the host has left one of these closed, a socket of ours would get its number, and what is
    // printed.
    for (int descriptor = 0; descriptor >= 0 && descriptor <= STDERR_FILENO;)
        descriptor = ::open("/dev/null", O_RDWR);
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
