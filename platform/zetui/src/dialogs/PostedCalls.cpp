#include "dialogs/PostedCalls.h"

#include <memory>
#include <thread>

#include <zetcore/threads/MainThread.h>
#include <zetcore/threads/PlainEventLoop.h>

namespace zetui::dialogs {

namespace {

constexpr std::chrono::milliseconds pollInterval{2};

} // namespace

void WaitForPostedCalls(std::chrono::steady_clock::duration atMost)
{
    namespace threads = zetcore::threads;
    const auto until = std::chrono::steady_clock::now() + atMost;
    if (const auto loop =
            std::dynamic_pointer_cast<threads::PlainEventLoop>(threads::GetRegisteredMainThread())) {
        loop->WaitAndRun(until);
        return;
    }
    // No loop of ours runs here that could be woken.
    if (!threads::RunQueuedCalls(until))
        std::this_thread::sleep_for(pollInterval);
}

} // namespace zetui::dialogs
