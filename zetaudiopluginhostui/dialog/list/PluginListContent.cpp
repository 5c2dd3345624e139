#include "dialog/list/PluginListContent.h"

#include <algorithm>
#include <functional>
#include <string_view>

#include <zetaudiofilterhost/AudioFilterDescriptorManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>

#include "dialog/list/PluginListText.h"

namespace zetaudiopluginhostui {

using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::BannedPluginManager;

namespace {

bool AreSynthsEnabled()
{
    return zetaudiofilterhost::AudioFilterDescriptorManager::GetInstance()->AreSynthsEnabled();
}

} // namespace

bool PluginListContent::Update()
{
    const auto now = PluginModuleInfoManager::GetInstance()->GetRecordChanges();
    const bool isCurrent = IsCurrent();
    const bool sameOrder = isCurrent && changes.enabled == now.enabled;
    if (!isCurrent)
        Read();
    changes = now;
    return !sameOrder;
}

void PluginListContent::Read()
{
    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
    records.assign(registry.PluginInfoBegin(), registry.PluginInfoEnd());
    withSynths = AreSynthsEnabled();
    texts.clear();
    textEnds.clear();
    std::size_t count = 0;
    for (const PluginListRow::InfoPtr& info : records) {
        if (info && (info->HasAnyNonSynthEffect() || withSynths))
            Add(count++, info->GetLocator(), info);
    }
    const BannedPluginManager& banned = *BannedPluginManager::GetInstance();
    for (auto locator = banned.BannedBegin(); locator != banned.BannedEnd(); ++locator)
        Add(count++, *locator, nullptr);
    rows.resize(count);
}

void PluginListContent::Add(std::size_t index, const zetaudiofilterhost::PluginLocator& locator,
                            const PluginListRow::InfoPtr& info)
{
    if (index == rows.size())
        rows.emplace_back();
    RowPtr& row = rows[index];
    if (!row || !row->IsFor(locator, info))
        row = zetui::utility::MakeIntrusive<PluginListRow>(locator, info);
    row->ForgetTextWidths();
    const PluginListEntry& entry = row->Entry();
    zetaudiofilterhost::PluginFind::AppendTexts(GetCellText(kColumnName, entry),
                                                GetCellText(kColumnPath, entry),
                                                GetCellText(kColumnVersion, entry), texts);
    textEnds.push_back(texts.size());
}

bool PluginListContent::IsCurrent() const
{
    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
    const BannedPluginManager& banned = *BannedPluginManager::GetInstance();
    const auto isBanned = [](const RowPtr& row) { return !row->Entry().info; };
    const auto firstBanned = std::partition_point(rows.begin(), rows.end(), std::not_fn(isBanned));
    return withSynths == AreSynthsEnabled() && changes.content == registry.GetRecordChanges().content &&
           std::equal(records.begin(), records.end(), registry.PluginInfoBegin(), registry.PluginInfoEnd()) &&
           std::equal(firstBanned, rows.end(), banned.BannedBegin(), banned.BannedEnd(),
                      [](const RowPtr& row, const auto& locator) { return row->Entry().locator == locator; });
}

std::vector<PluginListContent::RowPtr>
PluginListContent::Find(const zetaudiofilterhost::PluginFind& find) const
{
    if (find.KeepsAll())
        return rows;
    std::vector<RowPtr> found;
    const std::string_view all = texts;
    std::size_t begin = 0;
    for (std::size_t index = 0; index < rows.size(); ++index) {
        const std::size_t end = textEnds[index];
        if (find.Keeps(all.substr(begin, end - begin)))
            found.push_back(rows[index]);
        begin = end;
    }
    return found;
}

} // namespace zetaudiopluginhostui
