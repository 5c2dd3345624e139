#include <zetcore/threads/Backoff.h>

#include <algorithm>
#include <thread>

namespace zetcore::threads {

void Backoff::operator()()
{
    constexpr std::chrono::microseconds longest{2000};
    // Until a time: some systems cut a short sleep down to nothing.
    std::this_thread::sleep_until(std::chrono::steady_clock::now() + next);
    next = std::min(next * 2, longest);
}

} // namespace zetcore::threads
