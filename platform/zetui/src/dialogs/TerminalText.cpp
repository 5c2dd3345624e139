#include "dialogs/TerminalText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include <zetcore/string/Utf.h>

namespace zetui::dialogs {

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

int WidthOf(char32_t codePoint)
{
    if (IsIn(zeroWidth, codePoint))
        return 0;
    return IsIn(doubleWidth, codePoint) ? 2 : 1;
}

int WideDisplayWidth(const std::wstring& text)
{
    int width = 0;
    for (std::size_t at = 0; at < text.size();)
        width += WidthOf(zetcore::string::NextCodePoint(text, at));
    return width;
}

std::string Bar(double part, int cells)
{
    const int full = static_cast<int>(std::lround(part * cells));
    return "[" + std::string(static_cast<std::size_t>(full), '#') +
           std::string(static_cast<std::size_t>(cells - full), '-') + "]";
}

std::string Percentage(double part)
{
    const std::string number = std::to_string(static_cast<int>(part * 100));
    return std::string(3 - number.size(), ' ') + number + "%";
}

std::string Join(const std::string& left, const std::string& right)
{
    return left.empty() || right.empty() ? left + right : left + "  " + right;
}

std::string Count(const ProgressLine& line)
{
    return std::to_string(line.progress) + "/" + std::to_string(line.total);
}

} // namespace

std::string PrintableText(std::string_view text, bool keepLines)
{
    const std::wstring wide = zetcore::string::UTF8to16(text);
    std::wstring printable;
    printable.reserve(wide.size());
    for (std::size_t at = 0; at < wide.size();) {
        const bool stray = zetcore::string::IsStrayUnit(wide, at);
        char32_t codePoint = zetcore::string::NextCodePoint(wide, at);
        if (stray || IsIn(directionMarks, codePoint))
            codePoint = 0xFFFD;
        else if (IsControl(codePoint) && !(keepLines && codePoint == '\n'))
            codePoint = ' ';
        zetcore::string::AppendCodePoint(printable, codePoint);
    }
    return zetcore::string::UTF16to8(printable);
}

int DisplayWidth(std::string_view printable)
{
    return WideDisplayWidth(zetcore::string::UTF8to16(printable));
}

std::string ElideLeft(std::string_view printable, int columns)
{
    std::wstring text = zetcore::string::UTF8to16(printable);
    int width = WideDisplayWidth(text);
    if (width <= columns)
        return std::string(printable);
    constexpr int dots = 3;
    if (columns <= dots)
        return std::string(static_cast<std::size_t>(std::max(columns, 0)), '.');
    std::size_t cut = 0;
    while (width > columns - dots)
        width -= WidthOf(zetcore::string::NextCodePoint(text, cut));
    return "..." + zetcore::string::UTF16to8(std::wstring_view(text).substr(cut));
}

std::string FormatProgressLine(const ProgressLine& line, int columns)
{
    const int room = std::max(columns - 1, 1);
    const std::string title = PrintableText(line.title, false);
    const std::string detail = Join(PrintableText(line.text, false), PrintableText(line.extraText, false));
    BarPosition position = line.position;
    position.Move(line.progress, line.total);
    const double part = position.Part();

    // The fullest one that leaves the detail enough to say what it is about.
    std::array<std::string, 4> heads;
    if (line.total == 0) {
        heads = {title, title, title, ""};
    } else {
        const std::string count = Count(line) + " " + Percentage(part);
        heads = {Join(title, Bar(part, 20) + " " + count), Bar(part, 20) + " " + count,
                 Bar(part, 10) + " " + count, count};
    }
    constexpr int detailColumns = 30;
    const int wanted = std::min(DisplayWidth(detail), detailColumns);
    const auto fitting = std::find_if(heads.begin(), heads.end(), [&](const std::string& head) {
        return DisplayWidth(head) + 2 + wanted <= room;
    });
    const std::string& head = fitting == heads.end() ? heads.back() : *fitting;
    const int rest = room - DisplayWidth(head) - (head.empty() ? 0 : 2);
    constexpr int tooShort = 4;
    return ElideLeft(Join(head, rest > tooShort ? ElideLeft(detail, rest) : std::string()), room);
}

std::string FormatPlainLine(const ProgressLine& line)
{
    const std::string detail = Join(PrintableText(line.text, false), PrintableText(line.extraText, false));
    if (line.total == 0)
        return detail;
    return "[" + Count(line) + "]" + (detail.empty() ? "" : " " + detail);
}

} // namespace zetui::dialogs
