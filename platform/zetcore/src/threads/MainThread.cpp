#include <zetcore/threads/MainThread.h>

#include <cstdio>
#include <cstdlib>
#include <deque>
#include <exception>
#include <limits>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

#include <zetcore/debug/Trace.h>
#include <zetcore/threads/ClearQueuedCalls.h>

#include "threads/QueuedCalls.h"
#include "utility/Immortal.h"

namespace zetcore::threads {

namespace {

struct MainThreadState
{
    std::mutex mutex;
    std::deque<std::function<void()>> calls;
    std::shared_ptr<MainThreadAdaptor> adaptor;
    std::thread::id thread;
};

MainThreadState& State()
{
    return utility::Immortal<MainThreadState>();
}

std::function<void()> TakeFirstCall()
{
    MainThreadState& state = State();
    const std::lock_guard lock(state.mutex);
    if (state.calls.empty())
        return {};
    std::function<void()> call = std::move(state.calls.front());
    state.calls.pop_front();
    return call;
}

void RunTraced(const std::function<void()>& call)
{
    try {
        call();
    } catch (const std::exception& error) {
        debug::TraceLine(1, "MainThread", std::string("A posted call failed: ") + error.what());
    } catch (...) {
        debug::TraceLine(1, "MainThread", "A posted call failed with an unknown exception");
    }
}

} // namespace

MainThreadAdaptor::~MainThreadAdaptor() = default;

void AsyncCallFromMainThread(std::function<void()> call, int delayMilliseconds)
{
    if (!call)
        throw std::invalid_argument("AsyncCallFromMainThread: there is nothing to call");
    if (delayMilliseconds != 0)
        throw std::invalid_argument("AsyncCallFromMainThread: a delay of " +
                                    std::to_string(delayMilliseconds) + " ms is not supported, only 0 is");
    MainThreadState& state = State();
    std::shared_ptr<MainThreadAdaptor> adaptor;
    {
        const std::lock_guard lock(state.mutex);
        state.calls.push_back(std::move(call));
        adaptor = state.adaptor;
    }
    if (adaptor)
        adaptor->Wake();
}

std::shared_ptr<MainThreadAdaptor> GetRegisteredMainThread()
{
    MainThreadState& state = State();
    const std::lock_guard lock(state.mutex);
    return state.adaptor;
}

void RegisterMainThread(std::shared_ptr<MainThreadAdaptor> adaptor)
{
    MainThreadState& state = State();
    std::shared_ptr<MainThreadAdaptor> replaced;
    bool callsWait = false;
    {
        const std::lock_guard lock(state.mutex);
        replaced = std::exchange(state.adaptor, adaptor);
        state.thread = adaptor ? std::this_thread::get_id() : std::thread::id{};
        callsWait = !state.calls.empty();
    }
    if (adaptor && callsWait)
        adaptor->Wake();
}

bool IsMainThread()
{
    MainThreadState& state = State();
    const std::lock_guard lock(state.mutex);
    return state.thread == std::this_thread::get_id();
}

void RequireMainThread(const char* operation)
{
    {
        MainThreadState& state = State();
        const std::lock_guard lock(state.mutex);
        if (!state.adaptor || state.thread == std::this_thread::get_id())
            return;
    }
    std::fprintf(stderr, "%s was called on another thread than the main thread, which alone may call it\n",
                 operation);
    std::abort();
}

std::size_t QueuedCallCount()
{
    MainThreadState& state = State();
    const std::lock_guard lock(state.mutex);
    return state.calls.size();
}

std::size_t RunQueuedCalls(std::size_t count, std::chrono::steady_clock::time_point deadline)
{
    std::size_t ran = 0;
    // The calls are taken one at a time, because a call may run the queue itself (a modal loop does) and must
    // find the later ones in it.
    for (; ran < count && std::chrono::steady_clock::now() < deadline; ++ran) {
        const std::function<void()> call = TakeFirstCall();
        if (!call)
            break;
        RunTraced(call);
    }
    return ran;
}

bool RunQueuedCalls(std::chrono::steady_clock::time_point deadline)
{
    return RunQueuedCalls(std::numeric_limits<std::size_t>::max(), deadline) > 0;
}

bool HasQueuedCalls()
{
    return QueuedCallCount() > 0;
}

void ClearQueuedCalls()
{
    std::deque<std::function<void()>> dropped;
    MainThreadState& state = State();
    const std::lock_guard lock(state.mutex);
    // These are destroyed after the lock is gone, because what the calls hold may post again when it goes.
    dropped.swap(state.calls);
}

} // namespace zetcore::threads
