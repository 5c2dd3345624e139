#pragma once

#include <string>
#include <utility>
#include <vector>

#include <zetcore/debug/Trace.h>

namespace zetcore::debug {

/// Keeps trace lines until it is destroyed. Made before a lock is taken, it writes them after the lock is
/// gone: a sink may do anything, and must not be called with somebody's lock held.
class DeferredTrace
{
  public:
    DeferredTrace() = default;
    ~DeferredTrace()
    {
        for (const Line& line : lines)
            TraceLine(line.level, line.category, line.text);
    }
    DeferredTrace(const DeferredTrace&) = delete;
    DeferredTrace& operator=(const DeferredTrace&) = delete;

    /// The category must outlive this object.
    void Add(int level, const char* category, std::string text)
    {
        lines.push_back({level, category, std::move(text)});
    }

  private:
    struct Line
    {
        int level;
        const char* category;
        std::string text;
    };
    std::vector<Line> lines;
};

} // namespace zetcore::debug
