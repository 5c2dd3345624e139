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

/// The places in a row of the cells with the enable checkbox and with the "Reload" button.
inline constexpr int kEnabledCell = 0;
inline constexpr int kStatusCell = 3;

/// The text in a column's cell. Empty for the Enabled column and for an unknown one.
std::wstring GetCellText(unsigned column, const PluginListEntry& entry);
/// The Enabled column sorts by this text: "2" for an enabled plug-in, "1" for any other, also a banned one.
std::wstring GetEnabledSortText(const PluginListEntry& entry);
/// The text of the Enabled column's cell for screen readers.
std::wstring GetEnabledDescription(const PluginListEntry& entry);
/// Says when and why a plug-in was banned, as far as that is known.
std::wstring GetBanDescription(const zetaudiopluginhost::BanInfo& info);

/// The facts about a plug-in for the foot of the list, in three lines: why it is banned and how to try it
/// again, its path, and maker, format, version and date of the file, as far as they are known.
std::wstring GetDetails(const PluginListEntry& entry);
/// The same facts for the clipboard, with the plug-in's name and status. Each has a line.
std::wstring GetDetailsToCopy(const PluginListEntry& entry);

} // namespace zetaudiopluginhostui
