#pragma once

#include <string>

#include <zetaudiopluginhost/BannedPluginManager.h>

#include "dialog/list/PluginListEntry.h"

/// The plug-in list shows these texts, and is sorted by them. Main thread.
namespace zetaudiopluginhostui {

/// The ids of the list's columns.
enum PluginColumn : unsigned
{
    kColumnEnabled = 1,
    kColumnName = 2,
    kColumnType = 3,
    kColumnStatus = 4,
    kColumnVersion = 5,
    kColumnPath = 6,
};

/// The enable checkbox's cell and the "Reload" button's, by their place in a row.
inline constexpr int kEnabledCell = 0;
inline constexpr int kStatusCell = 3;

/// Empty for a column without text and for an unknown one.
std::wstring GetCellText(unsigned column, const PluginListEntry& entry);
/// By what the Enabled column sorts: "2" for an enabled plug-in, "1" for any other, banned ones included.
std::wstring GetEnabledSortText(const PluginListEntry& entry);
/// The same for screen readers.
std::wstring GetEnabledDescription(const PluginListEntry& entry);
/// When and why a plug-in was banned, as far as that is known.
std::wstring GetBanDescription(const zetaudiopluginhost::BanInfo& info);

} // namespace zetaudiopluginhostui
