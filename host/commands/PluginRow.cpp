#include "commands/PluginRow.h"

#include <algorithm>

#include <zetcore/filesupport/File.h>

namespace zetaudiopluginmanager {

namespace {

std::wstring FoldAscii(std::wstring_view text)
{
    std::wstring folded(text);
    for (wchar_t& unit : folded) {
        if (unit >= L'A' && unit <= L'Z')
            unit = static_cast<wchar_t>(unit - L'A' + L'a');
    }
    return folded;
}

} // namespace

std::vector<PluginRow> CollectRows(zetaudiofilterhost::PluginModuleInfoManager& registry,
                                   const zetaudiopluginhost::BannedPluginManager& bannedList)
{
    std::vector<PluginRow> rows;
    for (auto info = registry.PluginInfoBegin(); info != registry.PluginInfoEnd(); ++info) {
        if (!*info)
            continue;
        const auto& plugin = **info;
        rows.push_back({plugin.GetLocator(),
                        plugin.GetName(),
                        plugin.GetVersionString(),
                        plugin.GetVendor(),
                        plugin.IsEnabled(),
                        plugin.HasAnyNonSynthEffect(),
                        false,
                        {}});
    }
    for (auto locator = bannedList.BannedBegin(); locator != bannedList.BannedEnd(); ++locator) {
        PluginRow row;
        row.locator = *locator;
        row.name = zetcore::filesupport::File(registry.GetDisplayStringForLocator(*locator)).GetTitle();
        row.banned = true;
        if (const auto info = bannedList.GetBanInfo(*locator))
            row.reason = info->reason;
        rows.push_back(std::move(row));
    }
    return rows;
}

bool MatchesFilter(const PluginRow& row, std::wstring_view text)
{
    const std::wstring wanted = FoldAscii(text);
    const auto contains = [&wanted](std::wstring_view where) {
        return FoldAscii(where).find(wanted) != std::wstring::npos;
    };
    return contains(row.name) || contains(row.locator.GetPath()) || contains(row.version);
}

bool IsChosen(const PluginRow& row, RowChoice choice)
{
    switch (choice) {
    case RowChoice::All:
        break;
    case RowChoice::Enabled:
        return !row.banned && row.enabled;
    case RowChoice::Disabled:
        return !row.banned && !row.enabled;
    case RowChoice::Banned:
        return row.banned;
    }
    return true;
}

std::vector<PluginRow> FilterRows(std::vector<PluginRow> rows, std::wstring_view text, RowChoice choice)
{
    std::erase_if(rows,
                  [&](const PluginRow& row) { return !IsChosen(row, choice) || !MatchesFilter(row, text); });
    return rows;
}

} // namespace zetaudiopluginmanager
