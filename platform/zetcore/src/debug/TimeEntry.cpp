#include <zetcore/debug/TimeEntry.h>

#include <charconv>
#include <string>

#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/debug/Trace.h>

namespace zetcore::debug {

std::optional<std::chrono::milliseconds> ParseSeconds(std::string_view text)
{
    constexpr double most = 1e6;
    double seconds = 0;
    const char* const textEnd = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), textEnd, seconds, std::chars_format::fixed);
    if (error != std::errc{} || end != textEnd || !(seconds > 0) || seconds > most)
        return std::nullopt;
    return std::chrono::ceil<std::chrono::milliseconds>(std::chrono::duration<double>(seconds));
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
