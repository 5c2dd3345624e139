#include <zetcore/string/TerminalText.h>

#include <algorithm>
#include <array>
#include <utility>

#include <zetcore/string/Utf.h>

namespace zetcore::string {

namespace {

using Range = std::pair<char32_t, char32_t>;

constexpr std::array<Range, 12> zeroWidth{{{0x0300, 0x036F},
                                           {0x0483, 0x0489},
                                           {0x0591, 0x05BD},
                                           {0x0610, 0x061A},
                                           {0x064B, 0x065F},
                                           {0x1AB0, 0x1AFF},
                                           {0x1DC0, 0x1DFF},
                                           {0x200B, 0x200D},
                                           {0x20D0, 0x20FF},
                                           {0xFE00, 0xFE0F},
                                           {0xFE20, 0xFE2F},
                                           {0xFEFF, 0xFEFF}}};
constexpr std::array<Range, 12> doubleWidth{{{0x1100, 0x115F},
                                             {0x2E80, 0x303E},
                                             {0x3041, 0x33FF},
                                             {0x3400, 0x4DBF},
                                             {0x4E00, 0xA4CF},
                                             {0xAC00, 0xD7A3},
                                             {0xF900, 0xFAFF},
                                             {0xFE30, 0xFE6F},
                                             {0xFF00, 0xFF60},
                                             {0xFFE0, 0xFFE6},
                                             {0x1F300, 0x1FAFF},
                                             {0x20000, 0x3FFFD}}};
constexpr std::array<Range, 4> directionMarks{
    {{0x061C, 0x061C}, {0x200E, 0x200F}, {0x202A, 0x202E}, {0x2066, 0x2069}}};

template<std::size_t Count>
bool IsIn(const std::array<Range, Count>& ranges, char32_t codePoint)
{
    return std::any_of(ranges.begin(), ranges.end(), [codePoint](const Range& range) {
        return codePoint >= range.first && codePoint <= range.second;
    });
}

bool IsControl(char32_t codePoint)
{
    return codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0) || codePoint == 0x2028 ||
           codePoint == 0x2029;
}

} // namespace

std::wstring ForTerminal(std::wstring_view text, bool keepLines)
{
    std::wstring harmless;
    harmless.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const bool stray = IsStrayUnit(text, at);
        char32_t codePoint = NextCodePoint(text, at);
        if (stray || IsIn(directionMarks, codePoint))
            codePoint = 0xFFFD;
        else if (IsControl(codePoint) && !(keepLines && codePoint == '\n'))
            codePoint = ' ';
        AppendCodePoint(harmless, codePoint);
    }
    return harmless;
}

int TerminalWidth(char32_t codePoint)
{
    if (IsIn(zeroWidth, codePoint))
        return 0;
    return IsIn(doubleWidth, codePoint) ? 2 : 1;
}

int TerminalWidth(std::wstring_view text)
{
    int width = 0;
    for (std::size_t at = 0; at < text.size();)
        width += TerminalWidth(NextCodePoint(text, at));
    return width;
}

} // namespace zetcore::string
