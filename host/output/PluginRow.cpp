#include "output/PluginRow.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include <zetaudiofilterhost/PluginFind.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/string/Utf.h>

namespace zetaudiopluginmanager {

namespace {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;

/// Empty for a record that is passed over.
std::optional<RowStatus> StatusOfRecord(ModuleStatus status)
{
    switch (status) {
    case ModuleStatus::Working:
        return RowStatus::Working;
    case ModuleStatus::Failed:
        return RowStatus::Failed;
    case ModuleStatus::Unreadable:
        return RowStatus::Unreadable;
    case ModuleStatus::Unscanned:
        return RowStatus::NotScanned;
    case ModuleStatus::NotAPlugin:
    case ModuleStatus::Skipped:
        break;
    }
    return std::nullopt;
}

using Bans = std::map<PluginLocator, zetaudiopluginhost::BanInfo>;

PluginRow RowOf(const PluginModuleInfo& plugin, RowStatus status)
{
    PluginRow row;
    row.locator = plugin.GetLocator();
    row.path = zetcore::string::ForDisplay(row.locator.GetPath());
    row.name = plugin.GetName();
    row.version = plugin.GetVersionString();
    row.vendor = plugin.GetVendor();
    row.id = plugin.GetUniqueId();
    row.category = plugin.GetCategory();
    row.enabled = plugin.IsEnabled();
    row.effect = plugin.HasAnyNonSynthEffect();
    row.instrument = plugin.HasAnySynth();
    row.status = status;
    row.reason = plugin.GetReason();
    row.fileTime = plugin.GetFileTime();
    return row;
}

std::wstring FileName(const PluginRow& row)
{
    return zetcore::filesupport::File(row.path).GetTitle();
}

PluginRow RowOf(const PluginLocator& locator, const zetaudiopluginhost::BanInfo& ban)
{
    PluginRow row;
    row.locator = locator;
    row.path = zetcore::string::ForDisplay(locator.GetPath());
    row.name = FileName(row);
    row.status = RowStatus::Banned;
    row.reason = ban.reason;
    row.bannedAt = ban.time;
    row.fileTime = ban.stamp.time;
    return row;
}

bool IsBanned(const Bans& bans, const PluginLocator& locator)
{
    return bans.contains(locator) || bans.contains(locator.ModuleLocator());
}

} // namespace

std::vector<PluginRow> CollectRows(zetaudiofilterhost::PluginModuleInfoManager& registry,
                                   const zetaudiopluginhost::BannedPluginManager& bannedList)
{
    Bans bans;
    for (auto locator = bannedList.BannedBegin(); locator != bannedList.BannedEnd(); ++locator)
        bans.emplace(*locator, bannedList.GetBanInfo(*locator).value_or(zetaudiopluginhost::BanInfo()));
    return CollectRows(registry.AllRecords(), bans);
}

std::vector<PluginRow>
CollectRows(const std::vector<zetaudiofilterhost::PluginModuleInfoManager::InfoPtr>& records,
            const Bans& bans)
{
    std::vector<PluginRow> rows, others;
    for (const auto& info : records) {
        const auto status = StatusOfRecord(info->GetStatus());
        if (!status || IsBanned(bans, info->GetLocator()))
            continue;
        PluginRow row = RowOf(*info, *status);
        if (*status == RowStatus::Working) {
            rows.push_back(std::move(row));
            continue;
        }
        row.enabled = false;
        if (row.name.empty())
            row.name = FileName(row);
        others.push_back(std::move(row));
    }
    for (const auto& [locator, ban] : bans)
        rows.push_back(RowOf(locator, ban));
    std::ranges::move(others, std::back_inserter(rows));
    return rows;
}

bool IsChosen(const PluginRow& row, RowChoice choice)
{
    const bool isWorking = row.status == RowStatus::Working;
    switch (choice) {
    case RowChoice::All:
        return isWorking || row.IsBanned();
    case RowChoice::Enabled:
        return isWorking && row.enabled;
    case RowChoice::Disabled:
        return isWorking && !row.enabled;
    case RowChoice::Banned:
        return row.IsBanned();
    case RowChoice::Failed:
        break;
    }
    return !isWorking;
}

std::vector<PluginRow> FilterRows(std::vector<PluginRow> rows, std::wstring_view text, RowChoice choice)
{
    const zetaudiofilterhost::PluginFind find(text);
    std::erase_if(rows, [&](const PluginRow& row) {
        std::string texts;
        zetaudiofilterhost::PluginFind::AppendTexts(
            row.name, row.path, row.IsBanned() ? zetaudiofilterhost::noVersion : row.version, texts);
        return !IsChosen(row, choice) || !find.Keeps(texts);
    });
    return rows;
}

} // namespace zetaudiopluginmanager
