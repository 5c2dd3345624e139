#pragma once

#include <chrono>
#include <optional>
#include <string_view>

#include <zetcore/Export.h>

/// Times as entries of the debug database.
namespace zetcore::debug {

/// Seconds as text, with an optional decimal fraction: "60", "0.25". Nothing for a text that is no number,
/// and for one that is not above 0 or above a million.
ZETCORE_API std::optional<std::chrono::milliseconds> ParseSeconds(std::string_view text);

/// The debug database's entry, or the default where there is no entry; one that is no time is traced, and
/// the default holds.
ZETCORE_API std::chrono::milliseconds TimeFromDebugDatabase(std::string_view key,
                                                            std::chrono::milliseconds defaultTime);

} // namespace zetcore::debug
