#pragma once

#include <functional>
#include <memory>
#include <thread>

namespace zettransport {

/// A thread that runs the calls posted to it, one after another. The destructor drops the calls that have not
/// begun and waits for the thread, except on that thread itself.
class TaskThread
{
  public:
    TaskThread();
    ~TaskThread();
    TaskThread(const TaskThread&) = delete;
    TaskThread& operator=(const TaskThread&) = delete;

    /// Any thread.
    void Post(std::function<void()> call);

  private:
    struct Queue;
    static void Run(Queue& queue);

    std::shared_ptr<Queue> queue;
    std::thread thread;
};

} // namespace zettransport
