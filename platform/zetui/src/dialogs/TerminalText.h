#pragma once

#include <string>
#include <string_view>

#include "dialogs/BarPosition.h"

/// The texts that the terminal presentation writes. All of them are UTF-8.
namespace zetui::dialogs {

/// Makes the text harmless for a terminal (`zetcore::string::ForTerminal`).
std::string PrintableText(std::string_view text, bool keepLines);

/// The number of columns that a printable text takes.
int DisplayWidth(std::string_view printable);

/// Cuts a text at the left and puts "..." there, because the end of a path, its file name, says most.
std::string ElideLeft(std::string_view printable, int columns);

struct ProgressLine
{
    std::string title;
    std::string text;
    std::string extraText;
    unsigned long long progress = 0;
    /// 0 for a bar that is only busy.
    unsigned long long total = 0;
    /// The bar and the percentage never go below this, whatever the counts say.
    BarPosition position;
};

/// One line that fits into a terminal of that many columns. The last column is left free.
std::string FormatProgressLine(const ProgressLine& line, int columns);

/// The same for a stream that is no terminal. Nothing is cut: "[3/160] extra text".
std::string FormatPlainLine(const ProgressLine& line);

} // namespace zetui::dialogs
