#pragma once

#include <condition_variable>
#include <mutex>
#include <thread>

#include <zetcore/Export.h>
#include <zetcore/threads/MainThread.h>

namespace zetcore::threads {

/// The event loop of a program without windows. Its main thread sleeps until something is posted. The thread
/// that made it registers it with `RegisterMainThread`.
class ZETCORE_API PlainEventLoop : public MainThreadAdaptor
{
  public:
    PlainEventLoop();
    ~PlainEventLoop() override;

    bool CanRun() const override;
    void Run(std::chrono::steady_clock::time_point deadline) override;
    void Wake() override;

    /// Runs the queued calls. When there are none, it sleeps until something is posted or the time is up, and
    /// runs that. Main thread.
    void WaitAndRun(std::chrono::steady_clock::time_point until);

  private:
    const std::thread::id mainThread;
    std::mutex mutex;
    std::condition_variable posted;
    bool woken = false;
};

} // namespace zetcore::threads
