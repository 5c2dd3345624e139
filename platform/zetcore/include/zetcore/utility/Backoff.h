#pragma once

#include <chrono>

#include <zetcore/Export.h>

namespace zetcore::utility {

/// The pauses of one wait that looks again and again. Each call pauses the thread: first for 50 microseconds,
/// then for an eighth of all pauses before, up to two milliseconds. So a wait lasts hardly longer than it has
/// to, and a long one costs no processor.
class ZETCORE_API Backoff
{
  public:
    void operator()();
    /// Returns how long the next pause will be.
    std::chrono::microseconds Next() const noexcept { return next; }

  private:
    std::chrono::microseconds next{50};
    std::chrono::microseconds waited{0};
};

} // namespace zetcore::utility
