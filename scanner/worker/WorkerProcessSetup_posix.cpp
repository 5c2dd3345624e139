#include "WorkerProcessSetup.h"

#include <csignal>
#include <cstdio>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace zetaudiofilterscan {

void SetUpWorkerProcess(std::uint64_t parentProcess)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    // A parent that ended before the line above sends nothing any more.
    if (static_cast<std::uint64_t>(::getppid()) != parentProcess)
        EndWorkerProcess(0);
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    const rlimit none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
    // A pipe would make it block-buffered, and a crash would lose what the plug-in said last.
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
}

void EndWorkerProcess(int exitCode)
{
    ::_exit(exitCode);
}

} // namespace zetaudiofilterscan
