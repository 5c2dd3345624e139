// Reads string tables, and makes texts with them.
#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include <zetcore/config/Localizer.h>

#include "FuzzTarget.h"
#include "config/StringTable.h"

namespace {

using namespace zetcore::config;

std::string Escaped(std::string_view text)
{
    std::string result;
    for (const char letter : text) {
        switch (letter) {
        case '\n':
            result += "\\n";
            break;
        case '\t':
            result += "\\t";
            break;
        case '"':
        case '\\':
            result += '\\';
            result += letter;
            break;
        default:
            result += letter;
        }
    }
    return result;
}

std::string Write(const StringTable& table)
{
    std::string text;
    for (const auto& [key, value] : table)
        text += "\"" + Escaped(key) + "\"=\"" + Escaped(value) + "\"\n";
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text = zetfuzz::Text(data, size);
    const std::vector<std::string> arguments = {"@1", "b", "@0"};
    Localizer localizer;
    StringTable table;
    try {
        table = ParseStringTable(text, "t.txt");
        localizer.LoadTableFromText(text, "t.txt");
    } catch (const std::runtime_error& error) {
        zetfuzz::Require(std::string_view(error.what()).starts_with("t.txt, line "),
                         "the error names file and line", error.what());
        InsertArguments(text, arguments);
        return 0;
    }
    zetfuzz::Require(ParseStringTable(Write(table), "again") == table,
                     "a table written again reads the same");
    for (const auto& [key, value] : table) {
        zetfuzz::Require(localizer.Localize(key + "=default") == value, "a key finds its text", key);
        const std::string inserted = localizer.Localize(key, arguments);
        zetfuzz::Require(std::count(value.begin(), value.end(), '@') > 0 || inserted == value,
                         "a text without arguments stays as it is", value);
    }
    return 0;
}
