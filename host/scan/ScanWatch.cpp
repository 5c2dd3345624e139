#include "scan/ScanWatch.h"

#include <utility>

#include <zetaudiopluginhostui/AudioPluginScan.h>

namespace zetaudiopluginmanager {

using zetaudiofilterhost::PluginLocator;
using zetaudiopluginhostui::AudioPluginScan;

ScanWatch::ScanWatch(zetaudiofilterhost::PluginModuleInfoManager& watchedRegistry,
                     zetaudiopluginhost::BannedPluginManager& watchedList, Actions scanActions)
    : registry(watchedRegistry), bannedList(watchedList), actions(std::move(scanActions)),
      scanCount(AudioPluginScan::GetScanCount()), now(registry, bannedList),
      connection(registry.GetPluginInfosChangedSignal().Connect([this] { OnInfosChanged(); }))
{}

void ScanWatch::OnInfosChanged()
{
    // The signal also comes for a change by the user, who knows of it.
    const bool isScan = std::exchange(scanCount, AudioPluginScan::GetScanCount()) != scanCount;
    if (!isScan) {
        now = RegistrySnapshot(registry, bannedList);
        return;
    }
    Result result{AudioPluginScan::GetLastEnd(), AudioPluginScan::GetLastPlugins(), {}, {}};
    const std::vector<PluginLocator> back = registry.PutBackUnreached();
    auto unreached = FindUnreached(registry, bannedList, result.scanned, back, result.end.reason);
    result.bannedAgain = BanAgain(unreached);
    RegistrySnapshot after(registry, bannedList);
    result.changes = now.ChangesTo(after, result.scanned, std::move(unreached));
    const bool bansHaveChanged = now.Bans() != after.Bans() || !result.bannedAgain.empty();
    now = std::move(after);
    if (!back.empty())
        actions.saveRegistry();
    if (bansHaveChanged)
        actions.saveBannedList();
    last = result;
    actions.tell(result);
}

std::vector<PluginLocator> ScanWatch::BanAgain(const std::vector<ChangedPlugin>& unreached) const
{
    std::vector<PluginLocator> banned;
    for (const ChangedPlugin& plugin : unreached)
        for (const auto& [locator, ban] : now.Bans())
            if ((locator == plugin.locator || locator.ModuleLocator() == plugin.locator) &&
                !bannedList.IsBanned(locator)) {
                bannedList.AddBannedPlugin(locator, ban);
                banned.push_back(locator);
            }
    return banned;
}

} // namespace zetaudiopluginmanager
