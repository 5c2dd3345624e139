#include <zetcore/threads/Backoff.h>

#include <algorithm>
#include <thread>

namespace zetcore::threads {

void Backoff::operator()()
{
    constexpr std::chrono::microseconds longest{2000};
    std::this_thread::sleep_for(next);
    next = std::min(next * 2, longest);
}

} // namespace zetcore::threads
