#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>

namespace zetaudiopluginmanager {

enum class RowStatus
{
    Working,
    Banned,
    /// The file loads but gives no plug-in.
    Failed,
    /// The file may not be read.
    Unreadable,
    /// The next scan tries it.
    NotScanned,
};

/// One plug-in as `list` shows it: a record of the registry, or a banned one.
struct PluginRow
{
    zetaudiofilterhost::PluginLocator locator;
    /// A banned plug-in's name is its file's.
    std::wstring name;
    /// The path as the manager's window shows it.
    std::wstring path;
    std::wstring version;
    std::wstring vendor;
    /// The plug-in's own id, and its category.
    std::wstring id, category;
    bool enabled = false;
    /// The plug-in offers an effect that is not an instrument.
    bool effect = false;
    bool instrument = false;
    RowStatus status = RowStatus::Working;
    /// Why the plug-in does not work, as far as that is known. UTF-8.
    std::string reason;
    /// Seconds since 1970 (UTC). 0 when the plug-in is not banned, and when the time is unknown.
    std::int64_t bannedAt = 0;
    /// The time of the file that was scanned or banned, in nanoseconds since 1970 (UTC). 0 when it is
    /// unknown.
    std::int64_t fileTime = 0;

    bool IsBanned() const noexcept { return status == RowStatus::Banned; }

    friend bool operator==(const PluginRow&, const PluginRow&) = default;
};

/// The choice of rows to show.
enum class RowChoice
{
    All,
    Enabled,
    Disabled,
    Banned,
    /// All plug-ins that do not work, for whatever reason.
    Failed,
};

/// The working plug-ins in the registry's order, then the banned ones, then the others that do not work.
/// Files that are passed over are left out. Main thread.
std::vector<PluginRow> CollectRows(zetaudiofilterhost::PluginModuleInfoManager& registry,
                                   const zetaudiopluginhost::BannedPluginManager& bannedList);
/// The same for records and bans that were read from elsewhere. Any thread.
std::vector<PluginRow>
CollectRows(const std::vector<zetaudiofilterhost::PluginModuleInfoManager::InfoPtr>& records,
            const std::map<zetaudiofilterhost::PluginLocator, zetaudiopluginhost::BanInfo>& bans);

/// True when the row belongs to the choice. `All` stands for the rows of the manager's window: working and
/// banned plug-ins.
bool IsChosen(const PluginRow& row, RowChoice choice);
/// The rows of the choice that the manager's find box would show for the text.
std::vector<PluginRow> FilterRows(std::vector<PluginRow> rows, std::wstring_view text, RowChoice choice);

} // namespace zetaudiopluginmanager
