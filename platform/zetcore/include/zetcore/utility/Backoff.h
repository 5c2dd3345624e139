#pragma once

#include <chrono>

#include <zetcore/Export.h>

namespace zetcore::utility {

/// One object per wait: each call pauses the polling thread, first for 50 microseconds, then longer and
/// longer up to two milliseconds, so that a short wait ends at once and a long one costs no processor.
class ZETCORE_API Backoff
{
  public:
    void operator()();
    /// The next pause.
    std::chrono::microseconds Next() const noexcept { return next; }

  private:
    std::chrono::microseconds next{50};
};

} // namespace zetcore::utility
