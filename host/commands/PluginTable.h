#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "commands/PluginRow.h"

namespace zetaudiopluginmanager {

struct TableStyle
{
    /// Columns to fit the table into; 0 for no limit. Below 80, 80 is taken.
    std::size_t width = 0;
    bool colour = false;
};

/// The table for people: a heading, one line a plug-in (by name, those that do not work last, the reason
/// below each), and a line that counts the kinds that the choice shows. Valid UTF-8 that a terminal shows as
/// it is.
std::string FormatPluginTable(std::vector<PluginRow> rows, const TableStyle& style,
                              RowChoice choice = RowChoice::All);

} // namespace zetaudiopluginmanager
