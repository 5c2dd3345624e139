#include "process/ProcessThreads.h"

#include <algorithm>
#include <chrono>

#include <zetcore/utility/Backoff.h>

namespace zetaudiopluginhost {

bool HasNewThreads(const std::vector<std::uint64_t>& before,
                   const std::function<std::vector<std::uint64_t>()>& list)
{
    // A thread that has been joined may be listed for a moment longer.
    constexpr std::chrono::milliseconds longest{20};
    const auto end = std::chrono::steady_clock::now() + longest;
    bool isLast = false;
    for (zetcore::utility::Backoff pause;; pause()) {
        const std::vector<std::uint64_t> now = list();
        if (std::includes(before.begin(), before.end(), now.begin(), now.end()))
            return false;
        if (isLast)
            return true;
        isLast = std::chrono::steady_clock::now() >= end;
    }
}

} // namespace zetaudiopluginhost
