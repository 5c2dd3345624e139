#pragma once

#include <span>

namespace zetaudiopluginhostui {

/// A column of the plug-in list, its title and its width when the dialog opens.
struct PluginColumnSpec
{
    unsigned id;
    const char* titleKey;
    float width;
};

/// The columns in the order of the header.
std::span<const PluginColumnSpec> PluginColumns();

/// The least width of a fitted column. 0 for a column that is not fitted.
float MinimumColumnWidth(unsigned column);
/// The larger one of the best fit and the column's minimum.
float FittedColumnWidth(unsigned column, float bestFit);
/// The width that a cell needs for a text of width `textWidth`. `reloadButtonWidth` is 0 for a column without
/// buttons.
float NeededCellWidth(float textWidth, float cellPadding, float reloadButtonWidth, float buttonGap);

} // namespace zetaudiopluginhostui
