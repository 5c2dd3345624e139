#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <utility>

#include <zetcore/threads/PlainEventLoop.h>

namespace zetaudiopluginhostui {

/// The main thread's loop; it says when something is posted, and when it is run.
class RecordingLoop : public zetcore::threads::PlainEventLoop
{
  public:
    explicit RecordingLoop(std::function<void(const std::string&)> noteStep) : note(std::move(noteStep)) {}

    bool CanRun() const override { return canRun && PlainEventLoop::CanRun(); }
    void Run(std::chrono::steady_clock::time_point until) override
    {
        note("run");
        deadline = until;
        PlainEventLoop::Run(until);
    }
    void Wake() override
    {
        note("post");
        PlainEventLoop::Wake();
    }

    bool canRun = true;
    /// Of the last `Run`.
    std::chrono::steady_clock::time_point deadline;

  private:
    const std::function<void(const std::string&)> note;
};

} // namespace zetaudiopluginhostui
