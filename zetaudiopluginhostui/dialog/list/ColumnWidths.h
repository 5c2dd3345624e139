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

/// In the order of the header.
std::span<const PluginColumnSpec> PluginColumns();

/// The width that a fitted column keeps at least; 0 for a column that is not fitted.
float MinimumColumnWidth(unsigned column);
/// The larger one of the best fit and the column's minimum.
float FittedColumnWidth(unsigned column, float bestFit);
/// A cell needs this width for a text that is that wide; `reloadButtonWidth` is 0 where no cell of the column
/// has a button.
float NeededCellWidth(float textWidth, float cellPadding, float reloadButtonWidth, float buttonGap);

} // namespace zetaudiopluginhostui
