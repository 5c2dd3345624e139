#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zetcore::string {

struct TextEntry
{
    std::string key;
    std::string value;
};

std::string_view Trim(std::string_view text);
std::vector<std::string_view> SplitText(std::string_view text, char separator);

/// Reads "key = value" and drops the spaces around both. Empty when there is no '=' or no key.
std::optional<TextEntry> ParseEntry(std::string_view text);

} // namespace zetcore::string
