#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <zetcore/Export.h>

namespace zetcore::debug {

/// Keeps what its thread traces as long as it exists. The lines are written when the thread's outermost one
/// goes.
///
/// A sink may do anything, so it must not be called while the caller holds a lock. Code that traces under a
/// lock makes one of these before it takes the lock; then the lines are written after the lock is gone.
class ZETCORE_API DeferredTrace
{
  public:
    DeferredTrace();
    ~DeferredTrace();
    DeferredTrace(const DeferredTrace&) = delete;
    DeferredTrace& operator=(const DeferredTrace&) = delete;

    /// Only trace calls this. Returns false when the calling thread has none.
    static bool Keep(int level, std::string_view category, std::string_view text);

  private:
    struct Line
    {
        int level;
        std::string category;
        std::string text;
    };
    std::vector<Line> lines;
    bool outermost;
};

} // namespace zetcore::debug
