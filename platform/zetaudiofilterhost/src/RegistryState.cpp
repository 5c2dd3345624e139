#include "RegistryState.h"

#include <algorithm>

#include "FolderPath.h"
#include "PluginPlatform.h"

namespace zetaudiofilterhost {

PluginModuleInfoManager::State::State()
{
    constexpr std::array types{TechnologyType::VST, TechnologyType::VST3, TechnologyType::AU};
    for (std::size_t index = 0; index < types.size(); ++index)
        technologies[index].technology = std::make_shared<PluginTechnology>(types[index]);
}

void PluginModuleInfoManager::State::Touch(const PluginLocator& locator)
{
    changed.insert(locator);
    const std::lock_guard lock(mutex);
    iterationStale = true;
}

void PluginModuleInfoManager::State::Put(const InfoPtr& info)
{
    info->CountChangesIn(recordChanges);
    const PluginLocator& locator = info->GetLocator();
    choices.erase(locator);
    records.insert_or_assign(locator, Record{info, info->IsEnabled()});
    Touch(locator);
}

void PluginModuleInfoManager::State::Forget(const PluginLocator& locator)
{
    const auto found = records.find(locator);
    if (found == records.end())
        return;
    const PluginModuleInfo& info = *found->second.info;
    if (RememberedChoice choice{info.IsEnabled(), info.GetUnknown()}; choice.IsWorthKeeping())
        choices.insert_or_assign(locator, std::move(choice));
    records.erase(found);
    Touch(locator);
}

bool PluginModuleInfoManager::State::CanHold(const InfoPtr& info)
{
    return info && !info->GetLocator().IsEmpty() && FindTechnology(info->GetLocator().GetTechnologyType());
}

std::vector<InfoPtr> PluginModuleInfoManager::State::FindModule(const PluginLocator& module) const
{
    std::vector<InfoPtr> infos;
    const PluginLocator first = module.ModuleLocator();
    for (auto record = records.lower_bound(first);
         record != records.end() && record->first.GetPath() == first.GetPath() &&
         record->first.GetTechnologyType() == first.GetTechnologyType();
         ++record)
        infos.push_back(record->second.info);
    return infos;
}

void PluginModuleInfoManager::State::ForgetModule(const PluginLocator& module)
{
    for (const InfoPtr& info : FindModule(module))
        Forget(info->GetLocator());
}

void PluginModuleInfoManager::State::GiveChoice(PluginModuleInfo& info)
{
    const Unknown* earlier = nullptr;
    if (const auto record = records.find(info.GetLocator()); record != records.end()) {
        if (!record->second.info->IsEnabled())
            info.SetEnabled(false);
        earlier = &record->second.info->GetUnknown();
    } else if (const auto choice = choices.find(info.GetLocator()); choice != choices.end()) {
        if (!choice->second.enabled)
            info.SetEnabled(false);
        earlier = &choice->second.unknown;
    }
    if (earlier && info.GetUnknown().IsEmpty())
        info.SetUnknown(Unknown(*earlier));
}

void PluginModuleInfoManager::State::Apply(const RegistryChange& change)
{
    if (change.info) {
        Put(change.info);
        return;
    }
    records.erase(change.locator);
    choices.erase(change.locator);
    if (change.choice)
        choices.emplace(change.locator, *change.choice);
    Touch(change.locator);
}

void PluginModuleInfoManager::State::Clear()
{
    records.clear();
    choices.clear();
    changed.clear();
    journal.End();
    for (Technology& technology : technologies) {
        technology.unknown = {};
        technology.folderUnknown.clear();
    }
    unknown = {};
    version = configurationVersion;
    loadError.clear();
    damagedPath.clear();
    const std::lock_guard lock(mutex);
    iterationStale = true;
}

void PluginModuleInfoManager::State::ReplaceContent(Configuration configuration,
                                                    const std::vector<RegistryChange>& changes)
{
    Clear();
    version = std::move(configuration.version);
    unknown = std::move(configuration.unknown);
    for (const InfoPtr& info : configuration.modules) {
        info->CountChangesIn(recordChanges);
        records.insert_or_assign(records.end(), info->GetLocator(), Record{info, info->IsEnabled()});
    }
    for (RegistryChange& choice : configuration.choices)
        if (!records.contains(choice.locator))
            choices.insert_or_assign(choice.locator, std::move(*choice.choice));
    for (const RegistryChange& change : changes)
        Apply(change);
    // Last, because its signal lets others look at the registry.
    for (const Technology& technology : technologies) {
        const TechnologyType type = technology.technology->GetType();
        const auto isIt = [type](const TechnologyFolders& given) { return given.type == type; };
        if (std::none_of(configuration.technologies.begin(), configuration.technologies.end(), isIt))
            SetDefaultFolders(*technology.technology);
    }
    TakeFolders(configuration.technologies);
}

void PluginModuleInfoManager::State::TakeFolders(const std::vector<TechnologyFolders>& given)
{
    std::map<TechnologyType, std::vector<std::wstring>> paths;
    for (const TechnologyFolders& folders : given) {
        Technology* technology = FindTechnology(folders.type);
        std::vector<std::wstring>& all = paths[folders.type];
        for (const PluginFolder& folder : folders.folders) {
            all.push_back(folder.path);
            if (!folder.unknown.IsEmpty())
                technology->folderUnknown[NormalisedFolderPath(folder.path)] = folder.unknown;
        }
        if (!folders.unknown.IsEmpty())
            technology->unknown = folders.unknown;
    }
    for (const auto& [type, folders] : paths)
        FindTechnology(type)->technology->SetPluginDirectories(folders);
}

void PluginModuleInfoManager::State::SetDefaultFolders(PluginTechnology& technology)
{
    technology.SetPluginDirectories(DefaultPluginFolders(technology.GetType()));
}

PluginModuleInfoManager::State::Technology*
PluginModuleInfoManager::State::FindTechnology(TechnologyType type)
{
    for (Technology& technology : technologies)
        if (technology.technology->GetType() == type)
            return &technology;
    return nullptr;
}

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

} // namespace zetaudiofilterhost
