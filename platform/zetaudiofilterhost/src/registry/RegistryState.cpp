#include "registry/RegistryState.h"

#include <algorithm>

#include "files/FolderPath.h"
#include "formats/DefaultFolders.h"

namespace zetaudiofilterhost {

PluginModuleInfoManager::State::State()
{
    for (const PluginFormat& format : PluginFormats())
        technologies.push_back({&format, std::make_shared<PluginTechnology>(format.type), {}, {}});
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
    info->SetScannedAlone(false);
    const PluginLocator& locator = info->GetLocator();
    choices.erase(locator);
    asides.erase(locator);
    othersAsides.erase(locator);
    putBack.erase(locator);
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

void PluginModuleInfoManager::State::ForgetWhatResultsReplace(const std::vector<InfoPtr>& results)
{
    std::set<PluginLocator> given;
    std::set<PluginLocator> wholeModules;
    for (const InfoPtr& info : results) {
        given.insert(info->GetLocator());
        if (!info->IsScannedAlone())
            wholeModules.insert(info->GetLocator().ModuleLocator());
    }
    for (const PluginLocator& module : wholeModules) {
        for (const InfoPtr& old : FindModule(module))
            if (!given.contains(old->GetLocator()))
                Forget(old->GetLocator());
        DropAsidesOfModule(module);
    }
}

void PluginModuleInfoManager::State::Apply(const RegistryChange& change)
{
    if (change.info && change.isAside) {
        records.erase(change.locator);
        PutAside(change.info);
        return;
    }
    if (change.info) {
        Put(change.info);
        return;
    }
    records.erase(change.locator);
    asides.erase(change.locator);
    choices.erase(change.locator);
    if (change.choice)
        choices.emplace(change.locator, *change.choice);
    Touch(change.locator);
}

void PluginModuleInfoManager::State::Clear()
{
    records.clear();
    choices.clear();
    asides.clear();
    othersAsides.clear();
    putBack.clear();
    vanished.clear();
    changed.clear();
    journal.End();
    for (Technology& technology : technologies) {
        technology.unknown = {};
        technology.folderUnknown.clear();
    }
    unknown = {};
    version = configurationVersion;
    loadError.reset();
    damagedPath.clear();
    const std::lock_guard lock(mutex);
    iterationStale = true;
}

void PluginModuleInfoManager::State::ReplaceContent(Configuration configuration,
                                                    const std::vector<RegistryChange>& changes)
{
    ReplaceRecords(configuration, changes);
    TakeAllFolders(configuration.technologies);
}

void PluginModuleInfoManager::State::ReplaceRecords(Configuration& configuration,
                                                    const std::vector<RegistryChange>& changes)
{
    Clear();
    version = std::move(configuration.version);
    unknown = std::move(configuration.unknown);
    for (const InfoPtr& info : configuration.modules) {
        info->CountChangesIn(recordChanges);
        info->SetScannedAlone(false);
        records.insert_or_assign(records.end(), info->GetLocator(), Record{info, info->IsEnabled()});
    }
    for (RegistryChange& choice : configuration.choices)
        if (!records.contains(choice.locator))
            choices.insert_or_assign(choice.locator, std::move(*choice.choice));
    for (const InfoPtr& aside : configuration.asides)
        if (!records.contains(aside->GetLocator()))
            PutAside(aside);
    for (const RegistryChange& change : changes)
        Apply(change);
}

RegistryChange PluginModuleInfoManager::State::StateOf(const PluginLocator& locator) const
{
    RegistryChange change{locator, nullptr, std::nullopt};
    if (const auto record = records.find(locator); record != records.end()) {
        change.info = record->second.info;
    } else if (const auto aside = asides.find(locator); aside != asides.end()) {
        change.info = aside->second;
        change.isAside = true;
    } else if (const auto choice = choices.find(locator); choice != choices.end()) {
        change.choice = choice->second;
    }
    return change;
}

std::map<PluginLocator, std::string> PluginModuleInfoManager::State::StateTexts() const
{
    std::set<PluginLocator> locators;
    for (const auto& [locator, record] : records)
        locators.insert(locator);
    for (const auto& [locator, info] : asides)
        locators.insert(locator);
    for (const auto& [locator, choice] : choices)
        locators.insert(locator);
    std::map<PluginLocator, std::string> texts;
    for (const PluginLocator& locator : locators)
        texts.emplace(locator, WriteChanges({StateOf(locator)}));
    return texts;
}

PluginModuleInfoManager::Copy PluginModuleInfoManager::State::MakeCopy() const
{
    Copy copy{MakeConfiguration(true), {}};
    for (InfoPtr& aside : copy.content.asides)
        aside = std::make_shared<PluginModuleInfo>(*aside);
    copy.enabled.reserve(copy.content.modules.size());
    for (const InfoPtr& info : copy.content.modules)
        copy.enabled.push_back(info->IsEnabled());
    return copy;
}

void PluginModuleInfoManager::State::UndoTo(const Copy& copy)
{
    NoteFlippedRecords();
    // The file has not changed, so what is known about it stays, and so does the scan of another program.
    std::set<PluginLocator> differing = changed;
    const std::map<PluginLocator, std::string> before = StateTexts();
    std::map<PluginLocator, InfoPtr> others = othersAsides;
    auto error = loadError;
    std::wstring damaged = damagedPath;
    Configuration content = copy.content;
    for (InfoPtr& aside : content.asides)
        aside = std::make_shared<PluginModuleInfo>(*aside);
    for (std::size_t index = 0; index < content.modules.size(); ++index)
        content.modules[index]->SetEnabled(copy.enabled[index]);
    ReplaceRecords(content, {});
    const std::map<PluginLocator, std::string> after = StateTexts();
    std::map<PluginLocator, std::string> all = before;
    all.insert(after.begin(), after.end());
    for (const auto& [locator, text] : all) {
        const auto old = before.find(locator), now = after.find(locator);
        if (old == before.end() || now == after.end() || old->second != now->second)
            differing.insert(locator);
    }
    changed = std::move(differing);
    std::erase_if(others, [this](const auto& aside) { return records.contains(aside.first); });
    othersAsides = std::move(others);
    loadError = std::move(error);
    damagedPath = std::move(damaged);
    TakeAllFolders(content.technologies);
}

void PluginModuleInfoManager::State::TakeAllFolders(const std::vector<TechnologyFolders>& given)
{
    for (const Technology& technology : technologies) {
        const TechnologyType type = technology.technology->GetType();
        const auto isIt = [type](const TechnologyFolders& folders) { return folders.type == type; };
        if (std::none_of(given.begin(), given.end(), isIt))
            SetDefaultFolders(technology);
    }
    TakeFolders(given);
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

void PluginModuleInfoManager::State::SetDefaultFolders(const Technology& technology)
{
    technology.technology->SetPluginDirectories(DefaultFoldersOf(*technology.format));
}

PluginModuleInfoManager::State::Technology*
PluginModuleInfoManager::State::FindTechnology(TechnologyType type)
{
    for (Technology& technology : technologies)
        if (technology.technology->GetType() == type)
            return &technology;
    return nullptr;
}

} // namespace zetaudiofilterhost
