#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include <zettesting/Patience.h>

namespace zettesting {

/// Other threads write events into this log, and the test waits for them. Any thread.
class EventLog
{
  public:
    void Add(std::string event)
    {
        // The lock is still held here: the test may end, and destroy this object, as soon as it sees the
        // event.
        const std::lock_guard lock(mutex);
        events.push_back(std::move(event));
        changed.notify_all();
    }

    /// Waits until there are so many events, and returns all of them. Returns fewer when they do not
    /// come.
    std::vector<std::string> Await(std::size_t count)
    {
        std::unique_lock lock(mutex);
        changed.wait_for(lock, patience, [&] { return events.size() >= count; });
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
