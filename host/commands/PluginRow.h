#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>

namespace zetaudiopluginmanager {

/// One plug-in as `list` shows it: a working one of the registry, or a banned one.
struct PluginRow
{
    zetaudiofilterhost::PluginLocator locator;
    /// A banned plug-in's name is its file's.
    std::wstring name;
    std::wstring version;
    std::wstring vendor;
    bool enabled = false;
    /// It offers an effect that is not an instrument.
    bool effect = false;
    bool banned = false;
    /// UTF-8; why it was banned, as far as that is known.
    std::string reason;

    friend bool operator==(const PluginRow&, const PluginRow&) = default;
};

/// Which rows to show.
enum class RowChoice
{
    All,
    Enabled,
    Disabled,
    Banned,
};

/// The working plug-ins in the registry's order, then the banned ones. Main thread.
std::vector<PluginRow> CollectRows(zetaudiofilterhost::PluginModuleInfoManager& registry,
                                   const zetaudiopluginhost::BannedPluginManager& bannedList);

/// The find test of the plug-in list: `text` occurs in the name, else the path, else the version; only the
/// letters A to Z are taken without regard to case. An empty text matches every row.
bool MatchesFilter(const PluginRow& row, std::wstring_view text);
bool IsChosen(const PluginRow& row, RowChoice choice);
std::vector<PluginRow> FilterRows(std::vector<PluginRow> rows, std::wstring_view text, RowChoice choice);

} // namespace zetaudiopluginmanager
