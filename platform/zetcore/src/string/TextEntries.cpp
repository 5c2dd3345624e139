#include "string/TextEntries.h"

namespace zetcore::string {

std::string_view Trim(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r";
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

std::vector<std::string_view> SplitText(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    for (;;) {
        const std::size_t end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return parts;
        text.remove_prefix(end + 1);
    }
}

std::optional<TextEntry> ParseEntry(std::string_view text)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos)
        return std::nullopt;
    const std::string_view key = Trim(text.substr(0, equals));
    if (key.empty())
        return std::nullopt;
    return TextEntry{std::string(key), std::string(Trim(text.substr(equals + 1)))};
}

} // namespace zetcore::string
