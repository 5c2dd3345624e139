#include "dialog/list/PluginListRow.h"

namespace zetaudiopluginhostui {

PluginListRow::PluginListRow(const zetaudiofilterhost::PluginLocator& locator, const InfoPtr& info)
    : UI_MultiColumnTreeRow(true), entry{locator, info}
{}

PluginListRow::~PluginListRow() = default;

bool PluginListRow::IsFor(const zetaudiofilterhost::PluginLocator& locator, const InfoPtr& info) const
{
    return entry.info == info && entry.locator == locator;
}

} // namespace zetaudiopluginhostui
