#include <zetaudiopluginhost/PluginModuleScanner.h>

#include <optional>
#include <utility>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhost/ModuleLoader.h>
#include <zetaudiopluginhost/ScanRules.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/threads/MainThread.h>

namespace zetaudiopluginhost {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetcore::filesupport::Dir;
using zetcore::filesupport::File;

namespace {

constexpr const char* scanCategory = "PluginModuleScanner";
void Ban(const PluginLocator& locator, const ScanOutcome& outcome)
{
    BannedPluginManager& banned = *BannedPluginManager::GetInstance();
    banned.AddBannedPlugin(locator, BanFor({outcome.failure}, outcome.stamp, outcome.couldNotLoad));
    try {
        banned.SaveConfiguration(File(Dir::PrefDir(), BannedPluginManager::GetSettingsFileName()));
    } catch (const zetcore::filesupport::file_exception& error) {
        zetcore::debug::TraceLine(1, scanCategory, error.what());
    }
}

void TakeIntoRegistry(const PluginLocator& locator, const ScanOutcome& outcome)
{
    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
    // A locator with a sub-component stands for that one; the rest of its shell stays as it is.
    const bool isKnown = locator.GetSubcomponent().empty() ? !registry.FindModule(locator).empty()
                                                           : registry.Find(locator) != nullptr;
    if (isKnown)
        registry.RemovePluginLocators({locator});
    registry.AddModules(outcome.infos);
    if (outcome.misbehaved)
        Ban(locator, outcome);
}

} // namespace

struct PluginModuleScanner::State
{
    std::vector<PluginLocator> locators;
    ScanOptions options;
    bool resultsOnly = false;
    bool isScanning = false;
    std::size_t current = 0;
    EntityScan entityScan;
    ScanOutcome lastOutcome;

    /// Modules that a shell's plug-ins may be in, too: those of this scan and those that are known.
    std::vector<PluginLocator> KnownModules() const
    {
        std::vector<PluginLocator> known = locators;
        PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
        for (auto info = registry.PluginInfoBegin(); info != registry.PluginInfoEnd(); ++info) {
            if (ModuleLoader::ReplacesShells((*info)->GetLocator().GetTechnologyType()))
                known.push_back((*info)->GetLocator());
        }
        return known;
    }

    std::optional<PluginLocator> Next() const
    {
        return current + 1 < locators.size() ? std::optional(locators[current + 1]) : std::nullopt;
    }

    void UseThisProcess()
    {
        auto loader = std::make_shared<ModuleLoader>(options, ModuleLoader::PhaseCallback());
        loader->SetKnownModules([this] { return KnownModules(); });
        loader->KeepSystemLibraries();
        entityScan = [this, loader](const PluginLocator& locator) { return loader->Scan(locator, Next()); };
    }

    ScanOutcome ScanOne(const PluginLocator& locator) const
    {
        if (std::optional<ScanOutcome> outcome = OutcomeWithoutLoading(locator))
            return std::move(*outcome);
        ScanOutcome outcome = entityScan(locator);
        CompleteOutcome(locator, outcome);
        return outcome;
    }
};

PluginModuleScanner::PluginModuleScanner(const std::vector<PluginLocator>& locators,
                                         bool disableShellSkipping, bool quickEffectScan, bool resultsOnly)
    : state(std::make_unique<State>())
{
    state->locators = locators;
    state->options = {disableShellSkipping, quickEffectScan};
    state->resultsOnly = resultsOnly;
}

PluginModuleScanner::~PluginModuleScanner()
{
    try {
        EndScan();
    } catch (const std::exception& error) {
        zetcore::debug::TraceLine(1, scanCategory, error.what());
    }
}

void PluginModuleScanner::SetEntityScan(EntityScan scan)
{
    state->entityScan = std::move(scan);
}

void PluginModuleScanner::BeginScan()
{
    zetcore::threads::AssertMainThread();
    if (state->isScanning)
        return;
    if (!state->entityScan)
        state->UseThisProcess();
    state->current = 0;
    state->isScanning = true;
    if (!state->resultsOnly)
        PluginModuleInfoManager::GetInstance()->BeginIncrementalSaves();
}

bool PluginModuleScanner::GetCurrentProgressInfo(PluginLocator& locator, std::string& statusText,
                                                 int& progress, int& total)
{
    if (!state->isScanning || state->current >= state->locators.size())
        return false;
    locator = state->locators[state->current];
    statusText = SubcomponentText(locator);
    progress = static_cast<int>(state->current);
    total = static_cast<int>(state->locators.size());
    return true;
}

bool PluginModuleScanner::ContinueScan()
{
    zetcore::threads::AssertMainThread();
    if (!state->isScanning || state->current >= state->locators.size())
        return false;
    const PluginLocator& locator = state->locators[state->current];
    state->lastOutcome = state->ScanOne(locator);
    if (!state->resultsOnly)
        TakeIntoRegistry(locator, state->lastOutcome);
    ++state->current;
    return state->current < state->locators.size();
}

bool PluginModuleScanner::PassOverCurrent()
{
    zetcore::threads::AssertMainThread();
    if (!state->isScanning || state->current >= state->locators.size())
        return false;
    state->lastOutcome = {};
    ++state->current;
    return state->current < state->locators.size();
}

void PluginModuleScanner::EndScan()
{
    zetcore::threads::AssertMainThread();
    if (!state->isScanning)
        return;
    state->isScanning = false;
    if (!state->resultsOnly)
        PluginModuleInfoManager::GetInstance()->EndIncrementalSaves();
}

const ScanOutcome& PluginModuleScanner::LastOutcome() const
{
    return state->lastOutcome;
}

} // namespace zetaudiopluginhost
