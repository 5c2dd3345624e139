#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <zetcore/Export.h>

namespace zetcore::debug {

/// As long as it exists, what its thread traces is kept; it is written when the outermost one goes. Made
/// before a lock is taken, it goes after the lock: a sink may do anything, and must not be called with
/// somebody's lock held.
class ZETCORE_API DeferredTrace
{
  public:
    DeferredTrace();
    ~DeferredTrace();
    DeferredTrace(const DeferredTrace&) = delete;
    DeferredTrace& operator=(const DeferredTrace&) = delete;

    /// For trace itself: false when the calling thread has none.
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
