#include "dialog/list/ColumnWidths.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "dialog/list/PluginListText.h"

namespace zetaudiopluginhostui {

std::span<const PluginColumnSpec> PluginColumns()
{
    static constexpr std::array columns{
        PluginColumnSpec{kColumnEnabled, "$$$/kiv/Enabled=Enabled", 80},
        PluginColumnSpec{kColumnName, "$$$/kiv/PluginManager/PluginName=Name", 140},
        PluginColumnSpec{kColumnType, "$$$/kiv/PluginManager/PluginType=Type", 70},
        PluginColumnSpec{kColumnStatus, "$$$/kiv/PluginManager/PluginStatus=Status", 70},
        PluginColumnSpec{kColumnVersion, "$$$/kiv/PluginManager/PluginVersion=Version", 70},
        PluginColumnSpec{kColumnPath, "$$$/kiv/PluginManager/PluginPath=Path", 240}};
    return columns;
}

float MinimumColumnWidth(unsigned column)
{
    switch (column) {
    case kColumnName:
        return 140;
    case kColumnStatus:
    case kColumnVersion:
        return 70;
    case kColumnPath:
        return 240;
    default:
        return 0;
    }
}

float FittedColumnWidth(unsigned column, float bestFit)
{
    return std::max(bestFit, MinimumColumnWidth(column));
}

float NeededCellWidth(float textWidth, float cellPadding, float reloadButtonWidth, float buttonGap)
{
    const float button = reloadButtonWidth > 0 ? reloadButtonWidth + buttonGap : 0;
    return std::trunc(textWidth) + cellPadding + 1 + button;
}

} // namespace zetaudiopluginhostui
