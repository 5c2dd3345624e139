#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace zettesting {

/// Other threads write events into this log, and the test waits for them. Any thread.
class EventLog
{
  public:
    /// The limit is long enough for a sanitizer's build on a busy machine.
    static constexpr std::chrono::seconds limit{60};

    void Add(std::string event)
    {
        // The lock is still held here: the test may end, and destroy this object, as soon as it sees the
        // event.
        const std::lock_guard lock(mutex);
        events.push_back(std::move(event));
        changed.notify_all();
    }

    /// Waits until there are so many events, and returns all of them. Returns fewer when the limit has
    /// passed.
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
