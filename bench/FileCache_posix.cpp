#include "FileCache.h"

#include <fstream>

#include <unistd.h>

namespace bench {

bool DropFileCache()
{
    // The system does not drop pages that it has not written yet.
    ::sync();
    std::ofstream file("/proc/sys/vm/drop_caches");
    constexpr int pagesAndNames = 3;
    file << pagesAndNames << std::endl;
    return file.good();
}

} // namespace bench
