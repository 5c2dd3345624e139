#include <zetcore/threads/PlainEventLoop.h>

#include <algorithm>
#include <stdexcept>

#include "threads/QueuedCalls.h"

namespace zetcore::threads {

PlainEventLoop::PlainEventLoop() : mainThread(std::this_thread::get_id()) {}

PlainEventLoop::~PlainEventLoop() = default;

bool PlainEventLoop::CanRun() const
{
    return std::this_thread::get_id() == mainThread;
}

void PlainEventLoop::Run(std::chrono::steady_clock::time_point deadline)
{
    if (!CanRun())
        throw std::logic_error("PlainEventLoop::Run must be called on the thread that made the loop");
    RunQueuedCalls(deadline);
}

void PlainEventLoop::Wake()
{
    const std::lock_guard lock(mutex);
    woken = true;
    posted.notify_all();
}

void PlainEventLoop::WaitAndRun(std::chrono::steady_clock::time_point until)
{
    if (!CanRun())
        throw std::logic_error("PlainEventLoop::WaitAndRun must be called on the thread that made the loop");
    {
        std::unique_lock lock(mutex);
        while (!HasQueuedCalls()) {
            const auto now = std::chrono::steady_clock::now();
            if (now >= until)
                return;
            // It waits in slices, because some C libraries overflow when they convert a time point near the
            // maximum.
            const auto slice =
                std::min<std::chrono::steady_clock::duration>(until - now, std::chrono::hours(1));
            posted.wait_for(lock, slice, [this] { return woken; });
            woken = false;
        }
    }
    // This runs all that is queued now, however late it is. The next call runs what these calls post.
    RunQueuedCalls(QueuedCallCount(), std::chrono::steady_clock::time_point::max());
}

} // namespace zetcore::threads
