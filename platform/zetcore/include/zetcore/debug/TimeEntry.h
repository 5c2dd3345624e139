#pragma once

#include <chrono>
#include <optional>
#include <string_view>

#include <zetcore/Export.h>

/// Times as entries of the debug database.
namespace zetcore::debug {

/// Reads seconds with an optional decimal fraction, such as "60" or "0.25". Empty for a text that is no
/// number, and for a number that is not above 0 or is above a million.
ZETCORE_API std::optional<std::chrono::milliseconds> ParseSeconds(std::string_view text);

/// Returns the debug database's entry, or the default where there is no entry. An entry that is no time is
/// traced, and the default holds.
ZETCORE_API std::chrono::milliseconds TimeFromDebugDatabase(std::string_view key,
                                                            std::chrono::milliseconds defaultTime);

} // namespace zetcore::debug
