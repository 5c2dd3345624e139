#include <zetcore/utility/Backoff.h>

#include <algorithm>
#include <thread>

namespace zetcore::utility {

void Backoff::operator()()
{
    constexpr std::chrono::microseconds longest{2000};
    constexpr int partOfWait = 8;
    // Some systems cut a short sleep down to nothing.
    const auto end = std::chrono::steady_clock::now() + next;
    for (auto now = end - next; now < end; now = std::chrono::steady_clock::now())
        std::this_thread::sleep_for(end - now);
    waited += next;
    next = std::clamp(waited / partOfWait, next, longest);
}

} // namespace zetcore::utility
