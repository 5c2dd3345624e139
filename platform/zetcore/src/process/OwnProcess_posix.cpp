#include <zetcore/process/OwnProcess.h>

#include <unistd.h>

namespace zetcore::process {

std::uint64_t OwnProcessNumber()
{
    return static_cast<std::uint64_t>(::getpid());
}

} // namespace zetcore::process
