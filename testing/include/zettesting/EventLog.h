#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace zettesting {

/// What other threads did, for a test that waits for it. Any thread.
class EventLog
{
  public:
    /// Long enough for a sanitizer's build on a busy machine.
    static constexpr std::chrono::seconds limit{60};

    void Add(std::string event)
    {
        // Told under the lock: the test may end, and destroy this, as soon as it can see the event.
        const std::lock_guard lock(mutex);
        events.push_back(std::move(event));
        changed.notify_all();
    }

    /// The events so far, as soon as there are that many (or the limit passes: then there are fewer).
    std::vector<std::string> Await(std::size_t count)
    {
        std::unique_lock lock(mutex);
        changed.wait_for(lock, limit, [&] { return events.size() >= count; });
        return events;
    }

    std::vector<std::string> Now() const
    {
        const std::lock_guard lock(mutex);
        return events;
    }

  private:
    mutable std::mutex mutex;
    std::condition_variable changed;
    std::vector<std::string> events;
};

} // namespace zettesting
