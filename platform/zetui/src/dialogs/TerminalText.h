#pragma once

#include <string>
#include <string_view>

#include "dialogs/BarPosition.h"

/// The texts that the terminal presentation writes. All of them are UTF-8.
namespace zetui::dialogs {

/// UTF-8 that cannot command a terminal (`zetcore::string::ForTerminal`).
std::string PrintableText(std::string_view text, bool keepLines);

/// Columns that printable text takes.
int DisplayWidth(std::string_view printable);

/// Cuts at the left, where "..." then says so: the end of a path, its file name, says most.
std::string ElideLeft(std::string_view printable, int columns);

struct ProgressLine
{
    std::string title;
    std::string text;
    std::string extraText;
    unsigned long long progress = 0;
    /// 0 for a bar that is only busy.
    unsigned long long total = 0;
    /// The bar and the percentage are at least this, whatever the counts say.
    BarPosition position;
};

/// One line that fits into a terminal of that many columns, the last one left free.
std::string FormatProgressLine(const ProgressLine& line, int columns);

/// The same for a stream that is no terminal, without any cut: "[3/160] extra text".
std::string FormatPlainLine(const ProgressLine& line);

} // namespace zetui::dialogs
