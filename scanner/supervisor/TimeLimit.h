#pragma once

#include <chrono>
#include <optional>
#include <string_view>

namespace zetaudiofilterscan {

/// Seconds as text, with an optional decimal fraction: "60", "0.25". Nothing for a text that is no number,
/// and for one that is not above 0 or above a million.
std::optional<std::chrono::milliseconds> ParseSeconds(std::string_view text);

/// The debug database's entry, or the default where there is none; an entry that is no time is traced.
std::chrono::milliseconds TimeLimitFromDebugDatabase(const char* key, std::chrono::milliseconds defaultLimit);

} // namespace zetaudiofilterscan
