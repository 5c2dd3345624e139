#pragma once

#include <chrono>

#include <zetcore/Export.h>

namespace zetcore::utility {

/// The pauses of one wait that looks again and again. Each call pauses the thread: first for 50 microseconds,
/// then longer and longer up to two milliseconds. So a short wait ends at once, and a long one costs no
/// processor.
class ZETCORE_API Backoff
{
  public:
    void operator()();
    /// Returns how long the next pause will be.
    std::chrono::microseconds Next() const noexcept { return next; }

  private:
    std::chrono::microseconds next{50};
};

} // namespace zetcore::utility
