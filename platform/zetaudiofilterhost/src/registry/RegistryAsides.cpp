// Records that are kept aside while their modules are scanned, so that a scan that does not reach them loses
// nothing.
#include "registry/RegistryState.h"

namespace zetaudiofilterhost {

namespace {

bool IsOfModule(const PluginLocator& locator, const PluginLocator& module)
{
    return locator.GetPath() == module.GetPath() && locator.GetTechnologyType() == module.GetTechnologyType();
}

} // namespace

void PluginModuleInfoManager::State::PutAside(const InfoPtr& info)
{
    const PluginLocator& locator = info->GetLocator();
    if (RememberedChoice choice{info->IsEnabled(), info->GetUnknown()}; choice.IsWorthKeeping())
        choices.insert_or_assign(locator, std::move(choice));
    asides.insert_or_assign(locator, info);
    othersAsides.erase(locator);
    putBack.erase(locator);
    Touch(locator);
}

void PluginModuleInfoManager::State::SetAside(const PluginLocator& locator)
{
    const auto found = records.find(locator);
    if (found == records.end())
        return;
    const InfoPtr info = found->second.info;
    info->SetScannedAlone(true);
    records.erase(found);
    PutAside(info);
}

void PluginModuleInfoManager::State::SetModuleAside(const PluginLocator& module)
{
    for (const InfoPtr& info : FindModule(module)) {
        SetAside(info->GetLocator());
        info->SetScannedAlone(false);
    }
}

void PluginModuleInfoManager::State::DropAsidesOfModule(const PluginLocator& module)
{
    for (auto* const kept : {&asides, &othersAsides}) {
        auto aside = kept->lower_bound(module.ModuleLocator());
        while (aside != kept->end() && IsOfModule(aside->first, module)) {
            Touch(aside->first);
            aside = kept->erase(aside);
        }
    }
}

bool PluginModuleInfoManager::State::HasAsideFor(const PluginLocator& locator) const
{
    for (auto aside = asides.lower_bound(locator.ModuleLocator());
         aside != asides.end() && IsOfModule(aside->first, locator); ++aside)
        if (!aside->second->IsScannedAlone() || aside->first == locator)
            return true;
    return false;
}

void PluginModuleInfoManager::State::DropAsidesFor(const PluginLocator& locator)
{
    auto aside = asides.lower_bound(locator.ModuleLocator());
    while (aside != asides.end() && IsOfModule(aside->first, locator)) {
        // A record that is being scanned alone waits for its own result.
        if (aside->second->IsScannedAlone() && aside->first != locator) {
            ++aside;
            continue;
        }
        Touch(aside->first);
        aside = asides.erase(aside);
    }
}

void PluginModuleInfoManager::State::DropBannedAsides()
{
    std::vector<PluginLocator> dropped;
    {
        const std::lock_guard lock(mutex);
        for (const auto& [locator, info] : asides)
            if (IsBannedLocked(locator))
                dropped.push_back(locator);
    }
    for (const PluginLocator& locator : dropped) {
        asides.erase(locator);
        Touch(locator);
    }
}

std::vector<PluginLocator> PluginModuleInfoManager::State::PutBack()
{
    DropBannedAsides();
    std::vector<PluginLocator> back;
    const std::map<PluginLocator, InfoPtr> unreached = std::move(asides);
    asides.clear();
    for (const auto& [locator, info] : unreached) {
        GiveChoice(*info);
        Put(info);
        putBack.insert(locator);
        back.push_back(locator);
    }
    return back;
}

} // namespace zetaudiofilterhost
