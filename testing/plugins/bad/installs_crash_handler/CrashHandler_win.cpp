#include "CrashHandler.h"

#include <windows.h>

namespace zettestplugin {

void InstallCrashHandler()
{
    ::AddVectoredExceptionHandler(1, [](EXCEPTION_POINTERS* pointers) -> LONG {
        if (pointers->ExceptionRecord->ExceptionCode != EXCEPTION_ACCESS_VIOLATION)
            return EXCEPTION_CONTINUE_SEARCH;
        ::TerminateProcess(::GetCurrentProcess(), 0);
        return EXCEPTION_CONTINUE_SEARCH;
    });
}

} // namespace zettestplugin
