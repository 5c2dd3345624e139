#include "debug/faults/FaultProcess.h"

#include <cstdio>
#include <cstdlib>

#include <windows.h>

namespace zetcore::debug {

void AnnounceAndStop(std::string_view)
{
    // This is not traced, because trace has places of its own.
    std::fputs("ZET_FAULT: this system does not let a process stop itself: the place is passed\n", stderr);
}

void KillOwnProcess()
{
    ::TerminateProcess(::GetCurrentProcess(), 9);
    std::_Exit(9);
}

} // namespace zetcore::debug
