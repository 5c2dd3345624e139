#include "IoThreads.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <string>
#include <thread>
#include <utility>

#include <boost/asio/post.hpp>
#include <zetcore/debug/Trace.h>

namespace zettransport {

std::shared_ptr<IoThreads> IoThreads::Create(int threadCount)
{
    const int count = std::max(threadCount, 1);
    std::shared_ptr<IoThreads> created(new IoThreads(count));
    created->threads.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        created->threads.emplace_back([created] { created->Run(); });
    return created;
}

IoThreads::IoThreads(int threadCount) : context(threadCount), work(context.get_executor()) {}

void IoThreads::SetStopping()
{
    const std::lock_guard lock(postMutex);
    stopping = true;
}

void IoThreads::Post(const Strand& strand, std::function<void()> call)
{
    const std::lock_guard lock(postMutex);
    if (stopping)
        return;
    boost::asio::post(strand, [self = shared_from_this(), call = std::move(call)] {
        if (!self->Stopping())
            call();
    });
}

void IoThreads::Stop()
{
    SetStopping();
    work.reset();
    // The threads cannot be left to run out of work, because this may be called by a handler on one of them,
    // and the handler counts as work. So the threads are stopped, and the last one carries out what they
    // leave.
    context.stop();
    bool onOwnThread = false;
    for (std::thread& thread : threads) {
        if (thread.get_id() == std::this_thread::get_id()) {
            onOwnThread = true;
            drainingThread = thread.get_id();
            thread.detach();
        } else {
            thread.join();
        }
    }
    threads.clear();
    if (!onOwnThread)
        Drain();
}

void IoThreads::Run()
{
    RunContext();
    if (drainingThread.load() == std::this_thread::get_id())
        Drain();
}

void IoThreads::Drain()
{
    context.restart();
    RunContext();
}

// A conversation goes back and forth: after one message the next comes soon, and to wake a sleeping thread
// can take longer than to answer. So a thread looks around for a moment before it sleeps.
void IoThreads::RunWhatFollowsSoon()
{
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::microseconds moment{100};
    for (auto until = Clock::now() + moment; Clock::now() < until;) {
        if (context.poll_one() > 0)
            until = Clock::now() + moment;
        else
            std::this_thread::yield();
    }
}

void IoThreads::RunContext()
{
    for (;;) {
        try {
            while (context.run_one() > 0)
                RunWhatFollowsSoon();
            return;
        } catch (const std::exception& error) {
            zetcore::debug::TraceLine(1, "zettransport", std::string("A handler threw: ") + error.what());
        }
    }
}

} // namespace zettransport
