#include "TimeLimit.h"

#include <charconv>
#include <string>

#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/debug/Trace.h>

namespace zetaudiofilterscan {

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

std::chrono::milliseconds TimeLimitFromDebugDatabase(const char* key, std::chrono::milliseconds defaultLimit)
{
    const std::string entry = zetcore::debug::DebugDatabase::Instance().GetEntry(key, "");
    if (entry.empty())
        return defaultLimit;
    const auto limit = ParseSeconds(entry);
    if (!limit)
        zetcore::debug::TraceLine(1, "zetaudiofilterscan",
                                  std::string(key) + " is no time in seconds: " + entry);
    return limit.value_or(defaultLimit);
}

} // namespace zetaudiofilterscan
