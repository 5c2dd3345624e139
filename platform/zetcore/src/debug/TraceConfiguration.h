#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zetcore::debug {

/// The content of the variable `ZET_TRACE`: "volume=N;file=PATH;off=CATEGORY,CATEGORY".
struct TraceConfiguration
{
    std::optional<int> volume;
    std::string file;
    std::vector<std::string> off;
    /// One sentence for each part that could not be understood. The other parts still count.
    std::vector<std::string> problems;
};

TraceConfiguration ParseTraceConfiguration(std::string_view text);

} // namespace zetcore::debug
