#include "FileGuard.h"

#include <sys/syscall.h>
#include <unistd.h>

namespace zetaudiofilterscan {

int FileGuardVersion()
{
    constexpr unsigned askForVersion = 1;
    const long version = ::syscall(SYS_landlock_create_ruleset, nullptr, 0, askForVersion);
    return version > 0 ? static_cast<int>(version) : 0;
}

std::optional<zetcore::utility::Reason> LackOfFileGuard()
{
    if (FileGuardVersion() > 0)
        return std::nullopt;
    return zetcore::utility::Reason{"This kernel cannot keep plug-ins from changing your files while they "
                                    "are scanned. Linux 5.13 and newer "
                                    "can, with Landlock among their security modules."};
}

} // namespace zetaudiofilterscan
