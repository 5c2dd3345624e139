#include "TaskThread.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <string>
#include <utility>

#include <zetcore/debug/Trace.h>

namespace zettransport {

struct TaskThread::Queue
{
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> calls;
    bool ending = false;
};

TaskThread::TaskThread() : queue(std::make_shared<Queue>())
{
    // The thread owns the queue too, because it outlives this object when the object is destroyed on it.
    thread = std::thread([shared = queue] { Run(*shared); });
}

TaskThread::~TaskThread()
{
    std::deque<std::function<void()>> dropped;
    {
        const std::lock_guard lock(queue->mutex);
        queue->ending = true;
        dropped.swap(queue->calls);
    }
    queue->changed.notify_one();
    if (thread.get_id() == std::this_thread::get_id())
        thread.detach();
    else
        thread.join();
}

void TaskThread::Post(std::function<void()> call)
{
    {
        const std::lock_guard lock(queue->mutex);
        queue->calls.push_back(std::move(call));
    }
    queue->changed.notify_one();
}

void TaskThread::Run(Queue& queue)
{
    for (;;) {
        std::function<void()> call;
        {
            std::unique_lock lock(queue.mutex);
            queue.changed.wait(lock, [&] { return queue.ending || !queue.calls.empty(); });
            if (queue.ending)
                return;
            call = std::move(queue.calls.front());
            queue.calls.pop_front();
        }
        try {
            call();
        } catch (const std::exception& error) {
            zetcore::debug::TraceLine(1, "zettransport", std::string("A posted call threw: ") + error.what());
        }
    }
}

} // namespace zettransport
