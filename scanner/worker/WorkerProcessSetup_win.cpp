#include "WorkerProcessSetup.h"

#include <cstdio>
#include <cstdlib>

#include <windows.h>

namespace zetaudiofilterscan {

// That the worker ends with its parent is the business of the job that the supervisor puts it into.
void SetUpWorkerProcess(std::uint64_t)
{
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    ::_set_abort_behavior(0, _WRITE_ABORT_MSG | _CALL_REPORTFAULT);
    // This runtime has no line buffering.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
}

void EndWorkerProcess(int exitCode)
{
    ::TerminateProcess(::GetCurrentProcess(), static_cast<UINT>(exitCode));
    std::_Exit(exitCode);
}

} // namespace zetaudiofilterscan
