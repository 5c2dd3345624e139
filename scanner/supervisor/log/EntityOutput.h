#pragma once

#include <string>
#include <string_view>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetcore/string/OutputTail.h>

namespace zetaudiofilterscan {

class ScanLog;

/// The output of one trial of a plug-in (standard output and error). It goes into the log, under the
/// plug-in's name, which is written again when another plug-in has written meanwhile, and its end is kept for
/// the verdict. Scanning thread.
class EntityOutput
{
  public:
    /// The log outlives it.
    EntityOutput(ScanLog& scanLog, const zetaudiofilterhost::PluginLocator& locator);

    /// Any bytes, cut anywhere.
    void Take(std::string_view bytes);

    /// The end of what came since the start.
    const std::string& Tail() const noexcept { return tail.Text(); }
    /// The last line with anything on it since the start, as it came.
    std::string LastLine() const { return tail.LastLine(); }

  private:
    ScanLog& log;
    std::string name;
    bool hasHeading = false;
    zetcore::string::OutputTail tail;
};

} // namespace zetaudiofilterscan
