#include "commands/DisplayText.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include <zetcore/string/Utf.h>

namespace zetaudiopluginmanager {

namespace {

constexpr std::string_view ellipsis = "\u2026";
constexpr char32_t replacement = 0xFFFD;

struct Range
{
    char32_t first, last;
};

template<std::size_t N>
bool IsIn(char32_t character, const std::array<Range, N>& ranges)
{
    return std::any_of(ranges.begin(), ranges.end(), [character](const Range& range) {
        return character >= range.first && character <= range.last;
    });
}

constexpr std::array<Range, 5> directionMarks{
    {{0x061C, 0x061C}, {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2066, 0x2069}, {0xFEFF, 0xFEFF}}};
constexpr std::array<Range, 6> noColumn{{{0x0300, 0x036F},
                                         {0x1AB0, 0x1AFF},
                                         {0x200B, 0x200D},
                                         {0x20D0, 0x20FF},
                                         {0xFE00, 0xFE0F},
                                         {0xFE20, 0xFE2F}}};
constexpr std::array<Range, 9> twoColumns{{{0x1100, 0x115F},
                                           {0x2E80, 0xA4CF},
                                           {0xAC00, 0xD7A3},
                                           {0xF900, 0xFAFF},
                                           {0xFE30, 0xFE6F},
                                           {0xFF01, 0xFF60},
                                           {0xFFE0, 0xFFE6},
                                           {0x1F300, 0x1FAFF},
                                           {0x20000, 0x3FFFD}}};

std::size_t WidthOf(char32_t character)
{
    return IsIn(character, noColumn) ? 0u : IsIn(character, twoColumns) ? 2u : 1u;
}

struct Character
{
    std::size_t begin, end, width;
};

/// Where each character of a valid UTF-8 text stands, and the columns that it takes.
std::vector<Character> CharactersOf(std::string_view utf8)
{
    std::vector<Character> characters;
    for (std::size_t index = 0; index < utf8.size();) {
        const auto lead = static_cast<unsigned char>(utf8[index]);
        const std::size_t length = std::min<std::size_t>(lead < 0x80   ? 1
                                                         : lead < 0xE0 ? 2
                                                         : lead < 0xF0 ? 3
                                                                       : 4,
                                                         utf8.size() - index);
        char32_t value = length == 1 ? lead : lead & (0x7Fu >> length);
        for (std::size_t byte = 1; byte < length; ++byte)
            value = (value << 6) | (static_cast<unsigned char>(utf8[index + byte]) & 0x3Fu);
        characters.push_back({index, index + length, WidthOf(value)});
        index += length;
    }
    return characters;
}

template<typename Convert>
std::string Rewrite(std::wstring_view text, Convert convertStray)
{
    std::wstring valid;
    valid.reserve(text.size());
    for (std::size_t index = 0; index < text.size();) {
        const std::size_t start = index;
        const char32_t codePoint = zetcore::string::NextCodePoint(text, index);
        if (zetcore::string::IsStrayUnit(text, start))
            convertStray(valid, text[start]);
        else
            zetcore::string::AppendCodePoint(valid, codePoint);
    }
    return zetcore::string::UTF16to8(valid);
}

void AppendReplacement(std::wstring& text, wchar_t)
{
    zetcore::string::AppendCodePoint(text, replacement);
}

void AppendEscape(std::wstring& text, wchar_t unit)
{
    constexpr wchar_t digits[] = L"0123456789ABCDEF";
    text += L"%u";
    for (int shift = 12; shift >= 0; shift -= 4)
        text += digits[(static_cast<std::uint32_t>(unit) >> shift) & 0xFu];
}

} // namespace

std::string ForTerminal(std::wstring_view text)
{
    const std::wstring shown = zetcore::string::ForDisplay(text);
    std::wstring harmless;
    harmless.reserve(shown.size());
    for (std::size_t index = 0; index < shown.size();) {
        const char32_t codePoint = zetcore::string::NextCodePoint(shown, index);
        zetcore::string::AppendCodePoint(harmless, IsIn(codePoint, directionMarks) ? replacement : codePoint);
    }
    return zetcore::string::UTF16to8(harmless);
}

std::vector<std::string> LinesForTerminal(std::string_view utf8)
{
    std::vector<std::string> lines;
    for (std::size_t start = 0; start <= utf8.size();) {
        const std::size_t end = std::min(utf8.find('\n', start), utf8.size());
        std::string line = ForTerminal(zetcore::string::UTF8to16(utf8.substr(start, end - start)));
        line.erase(line.find_last_not_of(' ') + 1);
        lines.push_back(std::move(line));
        start = end + 1;
    }
    while (!lines.empty() && lines.back().empty())
        lines.pop_back();
    return lines;
}

std::string ForJson(std::wstring_view text)
{
    return Rewrite(text, AppendReplacement);
}

std::string ForJson(std::string_view utf8)
{
    return ForJson(zetcore::string::UTF8to16(utf8));
}

std::string PathForJson(std::wstring_view path)
{
    return Rewrite(path, AppendEscape);
}

std::size_t DisplayWidth(std::string_view utf8)
{
    std::size_t width = 0;
    for (const Character& character : CharactersOf(utf8))
        width += character.width;
    return width;
}

std::string CutEnd(std::string_view utf8, std::size_t width)
{
    if (DisplayWidth(utf8) <= width)
        return std::string(utf8);
    std::size_t taken = 0, end = 0;
    for (const Character& character : CharactersOf(utf8)) {
        if (taken + character.width + 1 > width)
            break;
        taken += character.width;
        end = character.end;
    }
    return width == 0 ? std::string() : std::string(utf8.substr(0, end)).append(ellipsis);
}

std::string CutBeginning(std::string_view utf8, std::size_t width)
{
    if (DisplayWidth(utf8) <= width)
        return std::string(utf8);
    const std::vector<Character> characters = CharactersOf(utf8);
    std::size_t taken = 0, begin = utf8.size();
    for (auto character = characters.rbegin(); character != characters.rend(); ++character) {
        if (taken + character->width + 1 > width)
            break;
        taken += character->width;
        begin = character->begin;
    }
    return width == 0 ? std::string() : std::string(ellipsis).append(utf8.substr(begin));
}

std::vector<std::string> Wrap(std::string_view utf8, std::size_t width)
{
    if (width == 0)
        return {std::string(utf8)};
    std::vector<std::string> lines;
    while (DisplayWidth(utf8) > width) {
        std::size_t taken = 0, end = 0, lastSpace = 0;
        for (const Character& character : CharactersOf(utf8)) {
            if (utf8[character.begin] == ' ')
                lastSpace = character.begin;
            if (taken + character.width > width && end > 0)
                break;
            taken += character.width;
            end = character.end;
        }
        const std::size_t cut = lastSpace > 0 ? lastSpace : end;
        lines.emplace_back(utf8.substr(0, cut));
        utf8.remove_prefix(cut);
        while (!utf8.empty() && utf8.front() == ' ')
            utf8.remove_prefix(1);
    }
    if (!utf8.empty() || lines.empty())
        lines.emplace_back(utf8);
    return lines;
}

} // namespace zetaudiopluginmanager
