#include "PeakMemory.h"

#include <algorithm>
#include <chrono>

namespace bench {

PeakMemory::PeakMemory() : thread([this] { Watch(); }) {}

PeakMemory::~PeakMemory()
{
    Stop();
}

ScanMemory PeakMemory::Stop()
{
    goOn = false;
    if (thread.joinable())
        thread.join();
    return most;
}

void PeakMemory::Watch()
{
    while (goOn) {
        const ScanMemory now = MemoryOfChildren();
        most.host = std::max(most.host, now.host);
        most.scanner = std::max(most.scanner, now.scanner);
        most.workers = std::max(most.workers, now.workers);
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

} // namespace bench
