#include "process/ProcessThreads.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

#include <dirent.h>

namespace zetaudiopluginhost {

std::vector<std::uint64_t> ProcessThreads()
{
    std::vector<std::uint64_t> threads;
    struct CloseFolder
    {
        void operator()(DIR* folder) const { closedir(folder); }
    };
    const std::unique_ptr<DIR, CloseFolder> folder(opendir("/proc/self/task"));
    while (const dirent* entry = folder ? readdir(folder.get()) : nullptr) {
        if (entry->d_name[0] != '.')
            threads.push_back(std::strtoull(entry->d_name, nullptr, 10));
    }
    std::sort(threads.begin(), threads.end());
    return threads;
}

} // namespace zetaudiopluginhost
