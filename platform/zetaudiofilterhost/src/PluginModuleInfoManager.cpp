#include <zetaudiofilterhost/PluginModuleInfoManager.h>

#include "RegistryState.h"
#include <zetcore/debug/Trace.h>
#include <zetcore/string/Utf.h>

namespace zetaudiofilterhost {

PluginModuleInfoManager* PluginModuleInfoManager::GetInstance()
{
    static PluginModuleInfoManager instance;
    return &instance;
}

PluginModuleInfoManager::PluginModuleInfoManager() : state(std::make_unique<State>()) {}
PluginModuleInfoManager::~PluginModuleInfoManager() = default;

std::wstring PluginModuleInfoManager::GetSettingsFileName()
{
    return L"AudioPlugins.xml";
}

PluginModuleInfoManager::PluginInfoIterator PluginModuleInfoManager::PluginInfoBegin()
{
    state->RebuildIteration();
    return state->iteration.begin();
}

PluginModuleInfoManager::PluginInfoIterator PluginModuleInfoManager::PluginInfoEnd()
{
    state->RebuildIteration();
    return state->iteration.end();
}

PluginModuleInfoManager::InfoPtr PluginModuleInfoManager::Find(const PluginLocator& locator) const
{
    const auto record = state->records.find(locator);
    return record == state->records.end() ? nullptr : record->second.info;
}

std::vector<PluginModuleInfoManager::InfoPtr>
PluginModuleInfoManager::FindModule(const PluginLocator& module) const
{
    return state->FindModule(module);
}

std::size_t PluginModuleInfoManager::RecordCount() const
{
    return state->records.size();
}

PluginModuleInfoManager::RecordChanges PluginModuleInfoManager::GetRecordChanges() const noexcept
{
    const PluginModuleInfo::Changes& changes = *state->recordChanges;
    return {changes.enabled.load(std::memory_order_relaxed), changes.content.load(std::memory_order_relaxed)};
}

std::vector<PluginModuleInfoManager::InfoPtr> PluginModuleInfoManager::AllRecords() const
{
    std::vector<InfoPtr> infos;
    infos.reserve(state->records.size());
    for (const auto& [locator, record] : state->records)
        infos.push_back(record.info);
    return infos;
}

std::shared_ptr<PluginTechnology> PluginModuleInfoManager::GetPluginTechnology(TechnologyType type)
{
    const State::Technology* technology = state->FindTechnology(type);
    return technology ? technology->technology : nullptr;
}

std::shared_ptr<PluginTechnology> PluginModuleInfoManager::GetPluginTechnology(int type)
{
    return GetPluginTechnology(static_cast<TechnologyType>(type));
}

void PluginModuleInfoManager::ResetToDefaultFolders()
{
    for (const State::Technology& each : state->technologies) {
        PluginTechnology& technology = *each.technology;
        if (technology.GetType() == TechnologyType::VST ||
            technology.DirectoryBegin() == technology.DirectoryEnd())
            State::SetDefaultFolders(technology);
    }
}

void PluginModuleInfoManager::ResetAllToDefaultFolders()
{
    for (const State::Technology& each : state->technologies)
        State::SetDefaultFolders(*each.technology);
}

void PluginModuleInfoManager::RemovePluginLocators(const std::vector<PluginLocator>& locators)
{
    for (const PluginLocator& locator : locators) {
        if (locator.GetSubcomponent().empty())
            state->ForgetModule(locator);
        else
            state->Forget(locator);
    }
    const std::lock_guard lock(state->mutex);
    for (const PluginLocator& locator : locators)
        state->everBanned.erase(locator);
}

void PluginModuleInfoManager::AddModule(InfoPtr info)
{
    if (!state->CanHold(info)) {
        zetcore::debug::TraceLine(1, "PluginRegistry", "a record without technology or path is not added");
        return;
    }
    state->GiveChoice(*info);
    state->Put(info);
    // A scan in this process: the next save comes only when the next plug-in has been marked as being loaded.
    if (state->incremental)
        state->KeepFindings();
}

void PluginModuleInfoManager::AddConfiguration(const std::string& utf8Text, bool withFolders)
{
    const Configuration configuration = ReadConfiguration(utf8Text, "plug-in configuration");
    if (withFolders) {
        for (const InfoPtr& info : configuration.modules)
            state->Put(info);
        for (const RegistryChange& choice : configuration.choices)
            if (!state->records.contains(choice.locator))
                state->Apply(choice);
        state->TakeFolders(configuration.technologies);
        return;
    }
    // A scan speaks for the whole of each module that it mentions.
    std::set<PluginLocator> given;
    for (const InfoPtr& info : configuration.modules)
        given.insert(info->GetLocator());
    for (const PluginLocator& locator : given)
        for (const InfoPtr& old : state->FindModule(locator))
            if (!given.contains(old->GetLocator()))
                state->Forget(old->GetLocator());
    for (const InfoPtr& info : configuration.modules) {
        state->GiveChoice(*info);
        state->Put(info);
    }
    state->KeepFindings();
}

std::string PluginModuleInfoManager::ToConfigurationText(const std::vector<InfoPtr>& infos)
{
    Configuration configuration;
    for (const InfoPtr& info : infos)
        if (info && !info->GetLocator().ToString().empty())
            configuration.modules.push_back(info);
    return WriteConfiguration(configuration);
}

std::string PluginModuleInfoManager::GetLoadError() const
{
    return state->loadError;
}

std::wstring PluginModuleInfoManager::GetDisplayStringForLocator(const PluginLocator& locator) const
{
    return zetcore::string::ForDisplay(locator.GetPath());
}

PluginModuleInfoManager::PluginInfosChangedSignal&
PluginModuleInfoManager::GetPluginInfosChangedSignal() noexcept
{
    return state->infosChanged;
}

void PluginModuleInfoManager::SetBannedLocators(std::vector<PluginLocator> locators)
{
    const std::lock_guard lock(state->mutex);
    state->everBanned.insert(locators.begin(), locators.end());
    state->banned = {locators.begin(), locators.end()};
    state->iterationStale = true;
}

void PluginModuleInfoManager::Reset()
{
    state->Clear();
    state->damagedPath.clear();
    state->known.reset();
    state->incremental = false;
    for (const State::Technology& technology : state->technologies)
        technology.technology->SetPluginDirectories({});
    const std::lock_guard lock(state->mutex);
    state->banned.clear();
    state->everBanned.clear();
}

} // namespace zetaudiofilterhost
