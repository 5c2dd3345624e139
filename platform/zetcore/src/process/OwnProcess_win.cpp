#include <zetcore/process/OwnProcess.h>

#include <windows.h>

namespace zetcore::process {

std::uint64_t OwnProcessNumber()
{
    return ::GetCurrentProcessId();
}

} // namespace zetcore::process
