#include "terminal/DisplayText.h"

#include <algorithm>
#include <cstdint>

#include <zetcore/string/TerminalText.h>
#include <zetcore/string/Utf.h>

namespace zetaudiopluginmanager {

namespace {

constexpr std::string_view ellipsis = "\u2026";
constexpr char32_t replacement = 0xFFFD;

struct PlacedCharacter
{
    std::size_t begin, end, width;
};

/// The places of the characters in a text, with the number of columns that each takes.
std::vector<PlacedCharacter> CharactersOf(std::wstring_view text)
{
    std::vector<PlacedCharacter> characters;
    for (std::size_t end = 0; end < text.size();) {
        const std::size_t begin = end;
        const char32_t codePoint = zetcore::string::NextCodePoint(text, end);
        characters.push_back(
            {begin, end, static_cast<std::size_t>(zetcore::string::TerminalWidth(codePoint))});
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
    return zetcore::string::UTF16to8(zetcore::string::ForTerminal(text));
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
    return static_cast<std::size_t>(zetcore::string::TerminalWidth(zetcore::string::UTF8to16(utf8)));
}

std::string CutEnd(std::string_view utf8, std::size_t width)
{
    if (DisplayWidth(utf8) <= width)
        return std::string(utf8);
    const std::wstring text = zetcore::string::UTF8to16(utf8);
    std::size_t taken = 0, end = 0;
    for (const PlacedCharacter& character : CharactersOf(text)) {
        if (taken + character.width + 1 > width)
            break;
        taken += character.width;
        end = character.end;
    }
    return width == 0 ? std::string() : zetcore::string::UTF16to8(text.substr(0, end)).append(ellipsis);
}

std::string CutBeginning(std::string_view utf8, std::size_t width)
{
    if (DisplayWidth(utf8) <= width)
        return std::string(utf8);
    const std::wstring text = zetcore::string::UTF8to16(utf8);
    const std::vector<PlacedCharacter> characters = CharactersOf(text);
    std::size_t taken = 0, begin = text.size();
    for (auto character = characters.rbegin(); character != characters.rend(); ++character) {
        if (taken + character->width + 1 > width)
            break;
        taken += character->width;
        begin = character->begin;
    }
    return width == 0 ? std::string() : std::string(ellipsis) + zetcore::string::UTF16to8(text.substr(begin));
}

std::vector<std::string> Wrap(std::string_view utf8, std::size_t width)
{
    const std::wstring text = zetcore::string::UTF8to16(utf8);
    std::wstring_view rest = text;
    std::vector<std::string> lines;
    while (width > 0 && zetcore::string::TerminalWidth(rest) > static_cast<int>(width)) {
        std::size_t taken = 0, end = 0, lastSpace = 0;
        for (const PlacedCharacter& character : CharactersOf(rest)) {
            if (rest[character.begin] == ' ')
                lastSpace = character.begin;
            if (taken + character.width > width && end > 0)
                break;
            taken += character.width;
            end = character.end;
        }
        const std::size_t cut = lastSpace > 0 ? lastSpace : end;
        lines.push_back(zetcore::string::UTF16to8(rest.substr(0, cut)));
        rest.remove_prefix(std::min(rest.find_first_not_of(' ', cut), rest.size()));
    }
    if (!rest.empty() || lines.empty())
        lines.push_back(zetcore::string::UTF16to8(rest));
    return lines;
}

} // namespace zetaudiopluginmanager
