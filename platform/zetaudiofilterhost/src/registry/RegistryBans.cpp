// Bans as the registry sees them: what they hide, and when they end.
#include "registry/RegistryState.h"

#include <algorithm>

namespace zetaudiofilterhost {

namespace {

bool IsFinding(ModuleStatus status)
{
    return status != ModuleStatus::Unscanned && status != ModuleStatus::Unreadable;
}

/// A module's ban covers each of its sub-components, and a result for the whole module speaks for each of
/// them.
bool Concerns(const PluginModuleInfo& result, const PluginLocator& banned)
{
    const PluginLocator& locator = result.GetLocator();
    if (result.IsScannedAlone())
        return banned == locator || banned == locator.ModuleLocator();
    return banned.ModuleLocator() == locator.ModuleLocator();
}

} // namespace

bool PluginModuleInfoManager::State::IsBannedLocked(const PluginLocator& locator) const
{
    return !banned.empty() && (banned.contains(locator) || banned.contains(locator.ModuleLocator()));
}

void PluginModuleInfoManager::State::RebuildIteration()
{
    const std::lock_guard lock(mutex);
    if (!iterationStale)
        return;
    iteration.clear();
    for (const auto& [locator, record] : records)
        if (record.info->GetStatus() == ModuleStatus::Working && !IsBannedLocked(locator))
            iteration.push_back(record.info);
    iterationStale = false;
}

std::vector<PluginLocator>
PluginModuleInfoManager::State::BansEndedBy(const std::vector<InfoPtr>& results) const
{
    std::vector<PluginLocator> ended;
    const std::lock_guard lock(mutex);
    for (const auto& banning : banned) {
        const auto ends = [&banning](const InfoPtr& result) {
            return IsFinding(result->GetStatus()) && Concerns(*result, banning.first) &&
                   banning.second.IsDue({result->GetFileSize(), result->GetFileTime()});
        };
        if (std::any_of(results.begin(), results.end(), ends))
            ended.push_back(banning.first);
    }
    return ended;
}

std::vector<PluginLocator>
PluginModuleInfoManager::State::BansEndedByRemoving(const std::vector<PluginLocator>& locators) const
{
    std::vector<PluginLocator> ended;
    const std::lock_guard lock(mutex);
    for (const auto& banning : banned) {
        const PluginLocator& locator = banning.first;
        const auto ends = [&](const PluginLocator& removed) {
            const auto gone = vanished.find(removed);
            return gone != vanished.end() && gone->second &&
                   (removed == locator || removed == locator.ModuleLocator());
        };
        if (std::any_of(locators.begin(), locators.end(), ends))
            ended.push_back(locator);
    }
    return ended;
}

void PluginModuleInfoManager::State::TellEnded(const std::vector<PluginLocator>& bans)
{
    if (!bans.empty())
        bansEnded(bans);
}

void PluginModuleInfoManager::SetBannedLocators(std::vector<BannedModule> given)
{
    const std::lock_guard lock(state->mutex);
    state->banned.clear();
    for (BannedModule& ban : given) {
        state->everBanned.insert(ban.locator);
        PluginLocator locator = ban.locator;
        state->banned.insert_or_assign(std::move(locator), std::move(ban));
    }
    state->iterationStale = true;
}

PluginModuleInfoManager::BansEndedSignal& PluginModuleInfoManager::GetBansEndedSignal() noexcept
{
    return state->bansEnded;
}

} // namespace zetaudiofilterhost
