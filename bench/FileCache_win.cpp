#include "FileCache.h"

namespace bench {

// Windows has no call for it.
bool DropFileCache()
{
    return false;
}

} // namespace bench
