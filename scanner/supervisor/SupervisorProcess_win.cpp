#include "SupervisorProcess.h"

#include <cstdlib>

#include <windows.h>

namespace zetaudiofilterscan {

// A process without a console window is not sent the console's Ctrl-C; one that was started by hand is.
void SetUpSupervisorProcess()
{
    ::SetConsoleCtrlHandler(nullptr, TRUE);
}

std::string OwnProcessNumber()
{
    return std::to_string(::GetCurrentProcessId());
}

void EndSupervisorProcess(int exitCode)
{
    ::TerminateProcess(::GetCurrentProcess(), static_cast<UINT>(exitCode));
    std::_Exit(exitCode);
}

} // namespace zetaudiofilterscan
