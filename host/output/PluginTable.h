#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "output/PluginRow.h"

namespace zetaudiopluginmanager {

struct TableStyle
{
    /// The table is at most this many columns wide, and 80 where the number is less. 0 sets no limit.
    std::size_t width = 0;
    bool colour = false;
};

/// The table for people. It has a heading, a line for each plug-in, sorted by name, and a line that counts
/// the kinds that the choice shows. Plug-ins that do not work come last, with the reason below each. The text
/// is valid UTF-8 that a terminal shows as it is.
std::string FormatPluginTable(std::vector<PluginRow> rows, const TableStyle& style,
                              RowChoice choice = RowChoice::All);

} // namespace zetaudiopluginmanager
