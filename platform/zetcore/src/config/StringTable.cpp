#include "config/StringTable.h"

#include <algorithm>
#include <stdexcept>

#include <zetcore/string/UtfUnits.h>

namespace zetcore::config {

namespace {

struct MalformedLine : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

char Unescape(char escaped)
{
    switch (escaped) {
    case 'n':
        return '\n';
    case 't':
        return '\t';
    case '"':
    case '\\':
        return escaped;
    default:
        throw MalformedLine(std::string("unknown escape \"\\") + escaped + "\"");
    }
}

/// Takes a quoted text off the front of `line`.
std::string TakeQuoted(std::string_view& line)
{
    if (!line.starts_with('"'))
        throw MalformedLine("a quotation mark is expected");
    std::string text;
    for (std::size_t index = 1; index < line.size(); ++index) {
        if (line[index] == '"') {
            line.remove_prefix(index + 1);
            return text;
        }
        if (line[index] != '\\') {
            text.push_back(line[index]);
            continue;
        }
        if (++index == line.size())
            break;
        text.push_back(Unescape(line[index]));
    }
    throw MalformedLine("the closing quotation mark is missing");
}

void ParseEntry(std::string_view line, StringTable& table)
{
    if (!string::IsUTF8(line))
        throw MalformedLine("the text is not UTF-8");
    std::string key = TakeQuoted(line);
    if (!key.starts_with("$$$/") || key.find('=') != std::string::npos)
        throw MalformedLine("\"" + key + "\" is not a key");
    if (!line.starts_with('='))
        throw MalformedLine("an equals sign is expected after the key");
    line.remove_prefix(1);
    std::string text = TakeQuoted(line);
    if (!line.empty())
        throw MalformedLine("there is more after the text");
    const auto [place, added] = table.emplace(std::move(key), std::move(text));
    if (!added)
        throw MalformedLine("\"" + place->first + "\" is there already");
}

bool IsSkipped(std::string_view line)
{
    return line.starts_with('#') || line.find_first_not_of(" \t") == std::string_view::npos;
}

/// Returns how many of the digits at the front make the longest number below `count`, or 0 when no number of
/// them is below it.
std::size_t ArgumentDigits(std::string_view text, std::size_t count, std::size_t& number)
{
    std::size_t used = 0;
    std::size_t value = 0;
    for (std::size_t index = 0; index < text.size() && text[index] >= '0' && text[index] <= '9'; ++index) {
        value = value * 10 + static_cast<std::size_t>(text[index] - '0');
        if (value >= count)
            break;
        number = value;
        used = index + 1;
        if (value == 0)
            break;
    }
    return used;
}

} // namespace

StringTable ParseStringTable(std::string_view text, const std::string& nameForErrors)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark))
        text.remove_prefix(byteOrderMark.size());
    StringTable table;
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (IsSkipped(line))
            continue;
        try {
            ParseEntry(line, table);
        } catch (const MalformedLine& malformed) {
            throw std::runtime_error(nameForErrors + ", line " + std::to_string(number) + ": " +
                                     malformed.what());
        }
    }
    return table;
}

std::string InsertArguments(std::string_view text, const std::vector<std::string>& arguments)
{
    std::string result;
    while (!text.empty()) {
        const std::size_t mark = std::min(text.find('@'), text.size());
        result += text.substr(0, mark);
        text.remove_prefix(mark);
        if (text.empty())
            break;
        std::size_t number = 0;
        const std::size_t digits = ArgumentDigits(text.substr(1), arguments.size(), number);
        result += digits == 0 ? std::string_view("@") : std::string_view(arguments[number]);
        text.remove_prefix(1 + digits);
    }
    return result;
}

} // namespace zetcore::config
