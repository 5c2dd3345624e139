#include "debug/FaultProcess.h"

#include <cstdlib>

#include <windows.h>

#include <zetcore/debug/Trace.h>

namespace zetcore::debug {

void AnnounceAndStop(std::string_view)
{
    TraceLine(1, "FaultPoint", "this system does not let a process stop itself: the place is passed");
}

void KillOwnProcess()
{
    ::TerminateProcess(::GetCurrentProcess(), 9);
    std::_Exit(9);
}

} // namespace zetcore::debug
