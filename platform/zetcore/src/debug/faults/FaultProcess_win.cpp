#include "debug/faults/FaultProcess.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>

#include <windows.h>

#include <zetcore/utility/EnvironmentVariable.h>

namespace zetcore::debug {

void AnnounceAndStop(std::string_view place)
{
    const auto variable = utility::EnvironmentVariable("ZET_FAULT_PIPE");
    if (!variable)
        return;
    const std::filesystem::path pipe(*variable);
    const std::filesystem::path taken(*variable + L".taken");
    std::error_code error;
    std::filesystem::rename(pipe, taken, error);
    if (error)
        return;
    std::ofstream(taken) << place << " " << ::GetCurrentProcessId() << "\n";
    KillOwnProcess();
}

void KillOwnProcess()
{
    ::TerminateProcess(::GetCurrentProcess(), 9);
    std::_Exit(9);
}

} // namespace zetcore::debug
