#include "WorkerProcessSetup.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <windows.h>

namespace zetaudiofilterscan {

namespace {

// The exit code that `abort` would give is one that any program may end with.
void EndAborted(int)
{
    constexpr UINT statusFatalAppExit = 0x40000015;
    ::TerminateProcess(::GetCurrentProcess(), statusFatalAppExit);
}

// An exception that nobody caught ends the process with the exception's code, and no debugger is started.
LONG WINAPI EndWithException(EXCEPTION_POINTERS* pointers)
{
    ::TerminateProcess(::GetCurrentProcess(), pointers->ExceptionRecord->ExceptionCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

// Is asked before all other handlers. After a stack overflow there may be too little stack to find the filter
// above, where the whole stack was in use from the start, and then the process would end with no code of its
// own. With more stack a plug-in's own handler comes first.
LONG CALLBACK EndWithoutStack(EXCEPTION_POINTERS* pointers)
{
    constexpr ULONG_PTR enoughForTheFilter = 16 * 1024;
    if (pointers->ExceptionRecord->ExceptionCode != EXCEPTION_STACK_OVERFLOW)
        return EXCEPTION_CONTINUE_SEARCH;
    ULONG_PTR lowest = 0;
    ULONG_PTR highest = 0;
    ::GetCurrentThreadStackLimits(&lowest, &highest);
    if (reinterpret_cast<ULONG_PTR>(&lowest) - lowest < enoughForTheFilter)
        ::TerminateProcess(::GetCurrentProcess(), EXCEPTION_STACK_OVERFLOW);
    return EXCEPTION_CONTINUE_SEARCH;
}

} // namespace

// The supervisor puts the worker into a job, which ends the worker with its parent.
void SetUpWorkerProcess(std::uint64_t)
{
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    ::_set_error_mode(_OUT_TO_STDERR);
    std::signal(SIGABRT, &EndAborted);
    ::SetUnhandledExceptionFilter(&EndWithException);
    constexpr ULONG first = 1;
    ::AddVectoredExceptionHandler(first, &EndWithoutStack);
    // A stack overflow leaves two pages by default, too few to find the filter above through a deep stack.
    ULONG stackForTheFilter = 64 * 1024;
    ::SetThreadStackGuarantee(&stackForTheFilter);
    // This runtime has no line buffering.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
}

void ChooseDisplay(bool) {}

// There is no home for plug-ins that they would have to find.
void SetVariables(const std::vector<std::pair<std::string, std::string>>&) {}

void EndWorkerProcess(int exitCode)
{
    ::TerminateProcess(::GetCurrentProcess(), static_cast<UINT>(exitCode));
    std::_Exit(exitCode);
}

} // namespace zetaudiofilterscan
