#pragma once

#include <cstdint>
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
    /// It loads and gives no plug-in.
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
    /// As the manager's window shows it.
    std::wstring path;
    std::wstring version;
    std::wstring vendor;
    /// The plug-in's own id, and its category.
    std::wstring id, category;
    bool enabled = false;
    /// It offers an effect that is not an instrument.
    bool effect = false;
    bool instrument = false;
    RowStatus status = RowStatus::Working;
    /// UTF-8; why it does not work, as far as that is known.
    std::string reason;
    /// Seconds since 1970 (UTC); 0 when it is not banned, or when that is not known.
    std::int64_t bannedAt = 0;
    /// Of the file that was scanned, or that the ban is about; nanoseconds since 1970 (UTC), 0 when unknown.
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
    /// Everything that does not work, whatever kept it from it.
    Failed,
};

/// The working plug-ins in the registry's order, then the banned ones, then the others that do not work. What
/// is no plug-in for this system is not among them. Main thread.
std::vector<PluginRow> CollectRows(zetaudiofilterhost::PluginModuleInfoManager& registry,
                                   const zetaudiopluginhost::BannedPluginManager& bannedList);

/// `All` are those that the manager's window lists: working and banned ones.
bool IsChosen(const PluginRow& row, RowChoice choice);
/// The chosen rows that the manager's find box would find by the text, too.
std::vector<PluginRow> FilterRows(std::vector<PluginRow> rows, std::wstring_view text, RowChoice choice);

} // namespace zetaudiopluginmanager
