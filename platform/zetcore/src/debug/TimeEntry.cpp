#include <zetcore/debug/TimeEntry.h>

#include <string>

#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/string/ParseNumber.h>

namespace zetcore::debug {

std::optional<std::chrono::milliseconds> ParseSeconds(std::string_view text)
{
    constexpr double most = 1e6;
    const auto seconds = string::ParseNumber<double>(text, std::chars_format::fixed);
    if (!seconds || !(*seconds > 0) || *seconds > most)
        return std::nullopt;
    return std::chrono::ceil<std::chrono::milliseconds>(std::chrono::duration<double>(*seconds));
}

std::chrono::milliseconds TimeFromDebugDatabase(std::string_view key, std::chrono::milliseconds defaultTime)
{
    const std::string entry = DebugDatabase::Instance().GetEntry(key, "");
    if (entry.empty())
        return defaultTime;
    const auto time = ParseSeconds(entry);
    if (!time)
        TraceLine(1, "DebugDatabase", std::string(key) + " is no time in seconds: " + entry);
    return time.value_or(defaultTime);
}

} // namespace zetcore::debug
