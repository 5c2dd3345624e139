#include <zetaudiopluginhost/PluginModuleScanner.h>

#include <optional>

#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhost/ModuleLoader.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/string/ParseNumber.h>
#include <zetcore/string/Utf.h>

#include "formats/PluginText.h"
#include "scan/FormatLoaders.h"

namespace zetaudiopluginhost {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetcore::filesupport::Dir;
using zetcore::filesupport::File;

namespace {

constexpr const char* traceCategory = "PluginModuleScanner";
constexpr const char* unsupportedReason = "it is on the list of unsupported plug-ins";

/// Shown directly behind the module's path.
std::string StatusText(const PluginLocator& locator)
{
    const std::string subcomponent = zetcore::string::UTF16to8(locator.GetSubcomponent());
    return subcomponent.empty() ? std::string() : " (" + subcomponent + ")";
}

/// The unique id of a format that the list of unsupported plug-ins is about.
std::optional<std::uint32_t> NumericId(const PluginModuleInfo& info)
{
    const FormatLoader* format = FindFormatLoader(info.GetLocator().GetTechnologyType());
    if (!format || !format->hasNumericIds)
        return std::nullopt;
    return zetcore::string::ParseNumber<std::uint32_t>(zetcore::string::UTF16to8(info.GetUniqueId()));
}

ScanOutcome RefusedFile(const PluginLocator& locator)
{
    auto info = std::make_shared<PluginModuleInfo>(locator);
    info->SetName(FileStem(locator.GetPath()));
    info->SetStatus(ModuleStatus::Skipped);
    info->SetReason(unsupportedReason);
    const zetaudiofilterhost::ModuleFileStamp stamp = zetaudiofilterhost::GetModuleFileStamp(locator);
    info->SetFileStamp(stamp.size, stamp.time);
    ScanOutcome outcome;
    outcome.infos.push_back(std::move(info));
    return outcome;
}

void RefuseUnsupported(const std::wstring& fileName, ScanOutcome& outcome)
{
    for (const auto& info : outcome.infos) {
        if (info->GetStatus() != ModuleStatus::Working)
            continue;
        const std::optional<std::uint32_t> id = NumericId(*info);
        if (id &&
            BannedPluginManager::GetInstance()->IsUnsupported(fileName, *id, info->GetNumericVersion())) {
            info->SetStatus(ModuleStatus::Skipped);
            info->SetReason(unsupportedReason);
        }
    }
}

/// Banned, and nothing has changed that a scan should try it again for.
bool StaysBanned(const PluginLocator& locator)
{
    const BannedPluginManager& banned = *BannedPluginManager::GetInstance();
    return banned.IsBanned(locator) && !banned.IsDueAgain(locator);
}

bool IsUnsupportedFile(const PluginLocator& locator)
{
    return BannedPluginManager::GetInstance()->IsUnsupportedFile(File(locator.GetPath()).GetTitle());
}

void Ban(const PluginLocator& locator, const ScanOutcome& outcome)
{
    BannedPluginManager& banned = *BannedPluginManager::GetInstance();
    banned.AddBannedPlugin(locator, BanInfo{outcome.reason, 0, outcome.stamp, outcome.couldNotLoad});
    try {
        banned.SaveConfiguration(File(Dir::PrefDir(), BannedPluginManager::GetSettingsFileName()));
    } catch (const zetcore::filesupport::file_exception& error) {
        zetcore::debug::TraceLine(1, traceCategory, error.what());
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

    void UseThisProcess()
    {
        auto loader = std::make_shared<ModuleLoader>(options, ModuleLoader::PhaseCallback());
        loader->SetKnownModules([this] { return KnownModules(); });
        entityScan = [loader](const PluginLocator& locator) { return loader->Scan(locator); };
    }

    ScanOutcome ScanOne(const PluginLocator& locator) const
    {
        if (StaysBanned(locator))
            return {};
        ScanOutcome outcome;
        if (IsUnsupportedFile(locator)) {
            outcome = RefusedFile(locator);
        } else {
            outcome = entityScan(locator);
            RefuseUnsupported(File(locator.GetPath()).GetTitle(), outcome);
        }
        for (const auto& info : outcome.infos)
            info->SetScannedAlone(!locator.GetSubcomponent().empty());
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
        zetcore::debug::TraceLine(1, traceCategory, error.what());
    }
}

void PluginModuleScanner::SetEntityScan(EntityScan scan)
{
    state->entityScan = std::move(scan);
}

void PluginModuleScanner::BeginScan()
{
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
    statusText = StatusText(locator);
    progress = static_cast<int>(state->current);
    total = static_cast<int>(state->locators.size());
    return true;
}

bool PluginModuleScanner::WillLoadCurrent() const
{
    if (!state->isScanning || state->current >= state->locators.size())
        return false;
    const PluginLocator& locator = state->locators[state->current];
    return !StaysBanned(locator) && !IsUnsupportedFile(locator);
}

bool PluginModuleScanner::ContinueScan()
{
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
    if (!state->isScanning || state->current >= state->locators.size())
        return false;
    state->lastOutcome = {};
    ++state->current;
    return state->current < state->locators.size();
}

void PluginModuleScanner::EndScan()
{
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
