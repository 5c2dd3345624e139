#include "output/PluginRow.h"

#include <algorithm>
#include <optional>

#include <zetaudiofilterhost/PluginFind.h>
#include <zetcore/filesupport/paths/File.h>

namespace zetaudiopluginmanager {

namespace {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginModuleInfo;

/// Empty for a record that is not listed.
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

PluginRow RowOf(const zetaudiofilterhost::PluginModuleInfoManager& registry, const PluginModuleInfo& plugin,
                RowStatus status)
{
    PluginRow row;
    row.path = registry.GetDisplayStringForLocator(plugin.GetLocator());
    row.locator = plugin.GetLocator();
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

} // namespace

std::vector<PluginRow> CollectRows(zetaudiofilterhost::PluginModuleInfoManager& registry,
                                   const zetaudiopluginhost::BannedPluginManager& bannedList)
{
    std::vector<PluginRow> rows;
    for (auto info = registry.PluginInfoBegin(); info != registry.PluginInfoEnd(); ++info)
        if (*info)
            rows.push_back(RowOf(registry, **info, RowStatus::Working));
    for (auto locator = bannedList.BannedBegin(); locator != bannedList.BannedEnd(); ++locator) {
        PluginRow row;
        row.locator = *locator;
        row.path = registry.GetDisplayStringForLocator(*locator);
        row.name = FileName(row);
        row.status = RowStatus::Banned;
        if (const auto info = bannedList.GetBanInfo(*locator)) {
            row.reason = info->reason;
            row.bannedAt = info->time;
            row.fileTime = info->stamp.time;
        }
        rows.push_back(std::move(row));
    }
    for (const auto& info : registry.AllRecords()) {
        const auto status = StatusOfRecord(info->GetStatus());
        if (!status || *status == RowStatus::Working || bannedList.IsBanned(info->GetLocator()))
            continue;
        PluginRow row = RowOf(registry, *info, *status);
        row.enabled = false;
        if (row.name.empty())
            row.name = FileName(row);
        rows.push_back(std::move(row));
    }
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
