#include "process/ProcessThreads.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace zetaudiopluginhost {

bool HasNewThreads(const std::vector<std::uint64_t>& before)
{
    // A thread that has been joined may be listed for a moment longer.
    constexpr int attempts = 20;
    for (int i = 0; i < attempts; ++i) {
        const std::vector<std::uint64_t> now = ProcessThreads();
        if (std::includes(before.begin(), before.end(), now.begin(), now.end()))
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

} // namespace zetaudiopluginhost
