#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <utility>

#include <zetcore/threads/PlainEventLoop.h>

namespace zetaudiopluginhostui {

/// The main thread's loop. It tells when something is posted, and when the loop is run.
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
    /// The deadline of the last `Run`.
    std::chrono::steady_clock::time_point deadline;

  private:
    const std::function<void(const std::string&)> note;
};

} // namespace zetaudiopluginhostui
