#include <zetaudiofilterhost/PluginModuleInfoManager.h>

#include <zetaudiofilterhost/ResetRegistry.h>

#include "registry/RegistryState.h"
#include <zetcore/debug/Trace.h>
#include <zetcore/string/Utf.h>
#include <zetcore/threads/MainThread.h>

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
    zetcore::threads::AssertMainThread();
    state->RebuildIteration();
    return state->iteration.begin();
}

PluginModuleInfoManager::PluginInfoIterator PluginModuleInfoManager::PluginInfoEnd()
{
    zetcore::threads::AssertMainThread();
    state->RebuildIteration();
    return state->iteration.end();
}

PluginModuleInfoManager::InfoPtr PluginModuleInfoManager::Find(const PluginLocator& locator) const
{
    zetcore::threads::AssertMainThread();
    const auto record = state->records.find(locator);
    return record == state->records.end() ? nullptr : record->second.info;
}

std::vector<PluginModuleInfoManager::InfoPtr>
PluginModuleInfoManager::FindModule(const PluginLocator& module) const
{
    zetcore::threads::AssertMainThread();
    return state->FindModule(module);
}

std::size_t PluginModuleInfoManager::RecordCount() const
{
    zetcore::threads::AssertMainThread();
    return state->records.size();
}

PluginModuleInfoManager::RecordChanges PluginModuleInfoManager::GetRecordChanges() const noexcept
{
    const PluginModuleInfo::Changes& changes = *state->recordChanges;
    return {changes.enabled.load(std::memory_order_relaxed), changes.content.load(std::memory_order_relaxed)};
}

std::vector<PluginModuleInfoManager::InfoPtr> PluginModuleInfoManager::AllRecords() const
{
    zetcore::threads::AssertMainThread();
    std::vector<InfoPtr> infos;
    infos.reserve(state->records.size());
    for (const auto& [locator, record] : state->records)
        infos.push_back(record.info);
    return infos;
}

std::shared_ptr<PluginTechnology> PluginModuleInfoManager::GetPluginTechnology(TechnologyType type)
{
    zetcore::threads::AssertMainThread();
    const State::Technology* technology = state->FindTechnology(type);
    return technology ? technology->technology : nullptr;
}

std::shared_ptr<PluginTechnology> PluginModuleInfoManager::GetPluginTechnology(int type)
{
    zetcore::threads::AssertMainThread();
    return GetPluginTechnology(static_cast<TechnologyType>(type));
}

void PluginModuleInfoManager::ResetToDefaultFolders()
{
    zetcore::threads::AssertMainThread();
    for (const State::Technology& each : state->technologies) {
        const PluginTechnology& technology = *each.technology;
        if (technology.GetType() == TechnologyType::VST ||
            technology.DirectoryBegin() == technology.DirectoryEnd())
            State::SetDefaultFolders(each);
    }
}

void PluginModuleInfoManager::ResetAllToDefaultFolders()
{
    zetcore::threads::AssertMainThread();
    for (const State::Technology& each : state->technologies)
        State::SetDefaultFolders(each);
}

void PluginModuleInfoManager::RemovePluginLocators(const std::vector<PluginLocator>& locators)
{
    zetcore::threads::AssertMainThread();
    const std::vector<PluginLocator> endedBans = state->BansEndedByRemoving(locators);
    for (const PluginLocator& locator : locators) {
        const bool isModule = locator.GetSubcomponent().empty();
        if (!state->vanished.contains(locator))
            isModule ? state->SetModuleAside(locator) : state->SetAside(locator);
        else
            isModule ? state->ForgetModule(locator) : state->Forget(locator);
    }
    state->vanished.clear();
    {
        const std::lock_guard lock(state->mutex);
        for (const PluginLocator& locator : locators)
            state->everBanned.erase(locator);
    }
    state->TellEnded(endedBans);
}

std::vector<PluginLocator> PluginModuleInfoManager::PutBackUnreached()
{
    zetcore::threads::AssertMainThread();
    return state->PutBack();
}

void PluginModuleInfoManager::AddModule(InfoPtr info)
{
    AddModules({std::move(info)});
}

void PluginModuleInfoManager::AddModules(std::vector<InfoPtr> infos)
{
    zetcore::threads::AssertMainThread();
    const auto refused = std::erase_if(infos, [this](const InfoPtr& info) { return !state->CanHold(info); });
    if (refused > 0)
        zetcore::debug::TraceLine(1, "PluginRegistry", "a record without technology or path is not added");
    std::vector<PluginLocator> endedBans;
    if (state->incremental)
        endedBans = state->BansEndedBy(infos);
    for (const InfoPtr& info : infos) {
        state->GiveChoice(*info);
        if (!info->IsScannedAlone())
            state->DropAsidesFor(info->GetLocator());
        state->Put(info);
    }
    // A scan in this process: the next save comes only when the next plug-in has been marked as being loaded.
    if (state->incremental && !infos.empty())
        state->KeepFindings();
    state->TellEnded(endedBans);
}

void PluginModuleInfoManager::AddConfiguration(const std::string& utf8Text, bool withFolders)
{
    zetcore::threads::AssertMainThread();
    Configuration configuration = ReadConfiguration(utf8Text, "plug-in configuration");
    if (withFolders) {
        for (const InfoPtr& info : configuration.modules)
            state->Put(info);
        for (const InfoPtr& aside : configuration.asides)
            if (!state->records.contains(aside->GetLocator()))
                state->PutAside(aside);
        for (const RegistryChange& choice : configuration.choices)
            if (!state->records.contains(choice.locator) && !state->asides.contains(choice.locator))
                state->Apply(choice);
        state->TakeFolders(configuration.technologies);
        return;
    }
    // A scan that could not look at a module says nothing about it: what is aside of it is to be put back.
    std::erase_if(configuration.modules, [this](const InfoPtr& info) {
        return info->GetStatus() == ModuleStatus::Unscanned && state->HasAsideFor(info->GetLocator());
    });
    const std::vector<PluginLocator> endedBans = state->BansEndedBy(configuration.modules);
    state->ForgetWhatResultsReplace(configuration.modules);
    for (const InfoPtr& info : configuration.modules) {
        state->GiveChoice(*info);
        state->Put(info);
    }
    state->KeepFindings();
    state->TellEnded(endedBans);
}

std::string PluginModuleInfoManager::ToConfigurationText(const std::vector<InfoPtr>& infos)
{
    Configuration configuration;
    for (const InfoPtr& info : infos)
        if (info && info->GetLocator().IsValid())
            configuration.modules.push_back(info);
    return WriteConfiguration(configuration);
}

std::string PluginModuleInfoManager::ToText() const
{
    zetcore::threads::AssertMainThread();
    return WriteConfiguration(state->MakeConfiguration(true));
}

std::shared_ptr<const PluginModuleInfoManager::Copy> PluginModuleInfoManager::MakeCopy() const
{
    zetcore::threads::AssertMainThread();
    return std::make_shared<const Copy>(state->MakeCopy());
}

void PluginModuleInfoManager::UndoTo(const Copy& copy)
{
    zetcore::threads::AssertMainThread();
    state->UndoTo(copy);
}

std::optional<zetcore::utility::Reason> PluginModuleInfoManager::GetLoadError() const
{
    zetcore::threads::AssertMainThread();
    return state->loadError;
}

std::wstring PluginModuleInfoManager::GetDisplayStringForLocator(const PluginLocator& locator) const
{
    zetcore::threads::AssertMainThread();
    return zetcore::string::ForDisplay(locator.GetPath());
}

PluginModuleInfoManager::PluginInfosChangedSignal&
PluginModuleInfoManager::GetPluginInfosChangedSignal() noexcept
{
    return state->infosChanged;
}

void PluginModuleInfoManager::Reset()
{
    zetcore::threads::AssertMainThread();
    state->Clear();
    state->damagedPath.clear();
    state->known.reset();
    state->unreadableFolders.clear();
    state->incremental = false;
    for (const State::Technology& technology : state->technologies)
        technology.technology->SetPluginDirectories({});
    const std::lock_guard lock(state->mutex);
    state->banned.clear();
    state->everBanned.clear();
}

void ResetRegistry(PluginModuleInfoManager& registry)
{
    registry.Reset();
}

} // namespace zetaudiofilterhost
