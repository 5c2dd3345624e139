#include "debug/faults/FaultProcess.h"

#include <csignal>
#include <cstdio>
#include <string>

#include <fcntl.h>
#include <unistd.h>

#include <zetcore/filesupport/handles/Descriptor.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/EnvironmentVariable.h>

namespace zetcore::debug {

void AnnounceAndStop(std::string_view place)
{
    const auto variable = utility::EnvironmentVariable("ZET_FAULT_PIPE");
    if (!variable)
        return;
    const std::string pipe = string::UTF16to8(*variable);
    const std::string taken = pipe + ".taken";
    if (::rename(pipe.c_str(), taken.c_str()) != 0)
        return;
    const std::string line = std::string(place) + " " + std::to_string(::getpid()) + "\n";
    {
        const filesupport::Descriptor opened(::open(taken.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK));
        if (::write(opened.Get(), line.data(), line.size()) != static_cast<ssize_t>(line.size()))
            return;
    }
    // The signal goes to this thread. If it went to the process, the system might tell another thread first,
    // and this one would go on for a while.
    ::raise(SIGSTOP);
}

void KillOwnProcess()
{
    ::kill(::getpid(), SIGKILL);
    // The signal may take a moment to arrive.
    for (;;)
        ::pause();
}

} // namespace zetcore::debug
