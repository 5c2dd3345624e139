#include "supervisor/process/SupervisorProcess.h"

#include <cstdio>
#include <cstdlib>

#include <windows.h>

namespace zetaudiofilterscan {

// A process without a console window is not sent the console's Ctrl-C; one that was started by hand is.
void SetUpSupervisorProcess()
{
    ::SetConsoleCtrlHandler(nullptr, TRUE);
    // The workers inherit this mode, so that the system shows no dialog whatever happens to them.
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
}

bool AsksToEnd(std::int64_t)
{
    return false;
}

// The job that holds the workers ends whatever they start; nothing else can be given up here.
void GiveUpPrivileges() {}

void EndSupervisorProcess(int exitCode)
{
    // Some runtime libraries do not write errors at once.
    std::fflush(stderr);
    ::TerminateProcess(::GetCurrentProcess(), static_cast<UINT>(exitCode));
    std::_Exit(exitCode);
}

} // namespace zetaudiofilterscan
