#include "scan/ScanOutcome.h"

#include <map>
#include <utility>

namespace zetaudiopluginmanager {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;

ScanOutcomes::ScanOutcomes(const zetaudiofilterhost::PluginModuleInfoManager& watchedRegistry,
                           const zetaudiopluginhost::BannedPluginManager& watchedList,
                           const Locators& scannedModules, Tell tellOutcome)
    : registry(watchedRegistry), bannedList(watchedList), tell(std::move(tellOutcome))
{
    for (const PluginLocator& module : scannedModules)
        if (untold.insert(module.ModuleLocator()).second)
            modules.push_back(module.ModuleLocator());
    total = modules.size();
}

void ScanOutcomes::Reach(const PluginLocator& plugin)
{
    const PluginLocator before = std::exchange(current, plugin.ModuleLocator());
    if (before == current || !untold.contains(before))
        return;
    ScanOutcome outcome = OutcomeOf(before);
    // A ban without a reason may be a mistake, and the plug-in is then scanned again.
    const bool isCertain = outcome.status != ScanOutcome::Status::NotScanned &&
                           (outcome.status != ScanOutcome::Status::Banned || !outcome.reason.empty());
    if (isCertain)
        TellOne(std::move(outcome));
}

void ScanOutcomes::End(const ScanReport& report)
{
    std::map<PluginLocator, std::string> unreached;
    for (const ChangedPlugin& plugin : report.changes.unreached)
        unreached.emplace(plugin.locator.ModuleLocator(), plugin.reason);
    for (const PluginLocator& module : modules) {
        if (!untold.contains(module))
            continue;
        const auto left = unreached.find(module);
        if (left == unreached.end()) {
            TellOne(OutcomeOf(module));
            continue;
        }
        ScanOutcome outcome;
        outcome.module = module;
        outcome.status = ScanOutcome::Status::NotScanned;
        outcome.reason = left->second;
        TellOne(std::move(outcome));
    }
}

ScanOutcome ScanOutcomes::OutcomeOf(const PluginLocator& module) const
{
    ScanOutcome outcome;
    outcome.module = module;
    if (const auto ban = bannedList.GetBanInfo(module)) {
        outcome.status = ScanOutcome::Status::Banned;
        outcome.reason = ban->reason;
        return outcome;
    }
    outcome.status = ScanOutcome::Status::NotScanned;
    for (const auto& record : registry.FindModule(module)) {
        switch (record->GetStatus()) {
        case ModuleStatus::Working:
            outcome.names.push_back(record->GetName());
            break;
        case ModuleStatus::Failed:
            outcome.status = ScanOutcome::Status::Failed;
            outcome.reason = record->GetReason();
            break;
        case ModuleStatus::Unreadable:
            outcome.status = ScanOutcome::Status::Unreadable;
            outcome.reason = record->GetReason();
            break;
        case ModuleStatus::NotAPlugin:
            outcome.status = ScanOutcome::Status::NoPlugin;
            outcome.reason = record->GetReason();
            break;
        case ModuleStatus::Skipped:
            outcome.status = ScanOutcome::Status::Skipped;
            outcome.reason = record->GetReason();
            break;
        case ModuleStatus::Unscanned:
            break;
        }
    }
    if (!outcome.names.empty()) {
        outcome.status = ScanOutcome::Status::Working;
        outcome.reason.clear();
    }
    return outcome;
}

void ScanOutcomes::TellOne(ScanOutcome outcome)
{
    untold.erase(outcome.module);
    outcome.total = total;
    outcome.done = total - untold.size();
    tell(outcome);
}

} // namespace zetaudiopluginmanager
