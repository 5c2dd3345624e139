#include "dialogs/TerminalText.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <zetcore/string/TerminalText.h>
#include <zetcore/string/Utf.h>

namespace zetui::dialogs {

namespace {

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
    return zetcore::string::UTF16to8(
        zetcore::string::ForTerminal(zetcore::string::UTF8to16(text), keepLines));
}

int DisplayWidth(std::string_view printable)
{
    return zetcore::string::TerminalWidth(zetcore::string::UTF8to16(printable));
}

std::string ElideLeft(std::string_view printable, int columns)
{
    std::wstring text = zetcore::string::UTF8to16(printable);
    int width = zetcore::string::TerminalWidth(text);
    if (width <= columns)
        return std::string(printable);
    constexpr int dots = 3;
    if (columns <= dots)
        return std::string(static_cast<std::size_t>(std::max(columns, 0)), '.');
    std::size_t cut = 0;
    while (width > columns - dots)
        width -= zetcore::string::TerminalWidth(zetcore::string::NextCodePoint(text, cut));
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

    // The fullest form counts that leaves the detail enough room to be understood.
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
