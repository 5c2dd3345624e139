#pragma once

#include <atomic>
#include <climits>
#include <sstream>
#include <string>
#include <string_view>

#include <zetcore/debug/Trace.h>

namespace zetaudiopluginhostui {

/// Traces the lines of one place in the external scan. Make the object static: it remembers whether the
/// category is enabled, and asks again only when the trace configuration has changed. Any thread.
class ScanTraceSite
{
  public:
    /// Has the signature of `zetcore::debug::TraceEnabled`, which is asked by default.
    using Question = bool (*)(std::string_view category, int level, bool defaultOn);

    explicit ScanTraceSite(Question traceEnabled = zetcore::debug::TraceEnabled) : ask(traceEnabled) {}

    /// Writes the parts as one line when the category is enabled.
    template<typename... Parts>
    void Write(const Parts&... parts)
    {
        if (!IsEnabled())
            return;
        std::ostringstream line;
        (line << ... << parts) << "\r\n";
        WriteLine(line.str());
    }

  private:
    bool IsEnabled();
    static void WriteLine(const std::string& line);

    const Question ask;
    std::atomic<int> seenChangeCount{INT_MIN};
    std::atomic<bool> enabled{false};
};

} // namespace zetaudiopluginhostui
