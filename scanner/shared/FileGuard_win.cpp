#include "FileGuard.h"

namespace zetaudiofilterscan {

int FileGuardVersion()
{
    return 0;
}

std::optional<zetcore::utility::Reason> LackOfFileGuard()
{
    return std::nullopt;
}

} // namespace zetaudiofilterscan
