#pragma once

#include <chrono>
#include <functional>

#include <zetcore/utility/Backoff.h>

namespace zettesting {

/// The longest that a test waits for what must happen. Only a failure takes so long: the limit is meant for a
/// sanitizer's build on a busy machine.
inline constexpr std::chrono::seconds patience{60};
/// The same for Qt's own waits, whose usual five seconds are too few there.
inline constexpr int patienceInMilliseconds = std::chrono::milliseconds(patience).count();

/// Looks until the condition holds, and does something between two looks: it rests unless told otherwise.
/// Returns false when the condition has never held.
inline bool Becomes(const std::function<bool()>& condition,
                    const std::function<void()>& between = zetcore::utility::Backoff())
{
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        between();
    }
    return true;
}

} // namespace zettesting
