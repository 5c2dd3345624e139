#include "commands/ScanRun.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <memory>
#include <set>

#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginScan.h>

#include "scan/ScannerProgram.h"
#include "terminal/Console.h"
#include "terminal/DisplayText.h"

namespace zetaudiopluginmanager {

namespace {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiopluginhostui::AudioPluginManager;
using zetaudiopluginhostui::AudioPluginScan;
using zetaudiopluginhostui::ScanEnd;

std::vector<PluginLocator> BannedLocators(const HostSession& session)
{
    return {session.Banned().BannedBegin(), session.Banned().BannedEnd()};
}

/// Adds a module that the scan has reached to the report's counts.
void CountModule(const HostSession& session, const PluginLocator& module, ScanReport& report)
{
    ++report.scanned;
    for (const auto& record : session.Registry().FindModule(module)) {
        if (record->GetStatus() == ModuleStatus::Working)
            ++report.found;
        else if (record->GetStatus() == ModuleStatus::Failed)
            report.failed.push_back({module.GetPath(), record->GetReason()});
    }
}

ScanEnd Scan(const std::vector<PluginLocator>& modules, bool useSeparateProcess, const ReachPlugin& reach)
{
    std::optional<OutputDiversion> diversion;
    if (!useSeparateProcess)
        diversion.emplace();
    const auto scan = std::make_shared<AudioPluginScan>(nullptr);
    if (reach)
        scan->SetProgressCallback(
            [&reach](const PluginLocator& plugin, std::size_t, std::size_t) { reach(plugin); });
    scan->ScanForPlugins(nullptr, modules, !AudioPluginManager::IsVST2ShellSkippingFeatureEnabled(),
                         AudioPluginManager::IsQuickEffectScanFeatureEnabled(), useSeparateProcess);
    return scan->GetEnd();
}

/// A scanner that a plug-in brings down leaves a reason. A scanner that leaves none was ended from outside,
/// and the plug-in that it was scanning was banned by mistake. This lifts such bans and returns their
/// plug-ins, which are then scanned once more.
std::vector<PluginLocator> TakeUnexplained(HostSession& session, const std::vector<PluginLocator>& modules,
                                           const RegistrySnapshot& before)
{
    const std::vector<PluginLocator> bannedNow = BannedLocators(session);
    std::vector<PluginLocator> unexplained;
    for (const PluginLocator& locator : bannedNow) {
        const auto info = session.Banned().GetBanInfo(locator);
        // A ban may also be another host's, which was read meanwhile.
        const bool isOurs = std::find(modules.begin(), modules.end(), locator) != modules.end() &&
                            !before.Bans().contains(locator);
        if (isOurs && info && info->reason.empty())
            unexplained.push_back(locator);
    }
    for (const PluginLocator& locator : unexplained) {
        Say("the scanner ended and left no reason; scanned again: " + ForTerminal(locator.GetPath()));
        session.Banned().RemoveBannedPlugin(locator);
    }
    if (!unexplained.empty())
        session.SaveBannedList();
    return unexplained;
}

/// The bans that the scan will try again.
std::vector<PluginLocator> BansToTryAgain(const HostSession& session,
                                          const std::vector<PluginLocator>& modules)
{
    const std::set<PluginLocator> scanned(modules.begin(), modules.end());
    std::vector<PluginLocator> due = BannedLocators(session);
    std::erase_if(due, [&](const PluginLocator& locator) {
        return (!scanned.contains(locator) && !scanned.contains(locator.ModuleLocator())) ||
               !session.Banned().IsDueAgain(locator);
    });
    return due;
}

/// Notes for each ban whether it was lifted. A scan that was ended early may not have tried all of them.
void NoteTriedAgain(const HostSession& session, const std::vector<PluginLocator>& due, ScanReport& report)
{
    for (const PluginLocator& locator : due) {
        const auto ban = session.Banned().GetBanInfo(locator);
        auto& banned = report.changes.banned;
        const bool isNoted = std::any_of(banned.begin(), banned.end(), [&locator](const auto& plugin) {
            return plugin.locator == locator;
        });
        if (ban && !isNoted && !report.Ended(ScanEnd::How::Done))
            continue;
        const ChangedPlugin plugin = session.Scans().Now().Named(locator, ban ? ban->reason : std::string());
        if (ban && !isNoted)
            banned.push_back(plugin);
        report.triedAgain.push_back({plugin, ban.has_value()});
    }
}

void SayWhyItDidNotStart(const std::string& reason)
{
    const ScannerProgramState state = LookAtScannerProgram();
    const std::string program = ForTerminal(ScannerProgramPath());
    // The program can be started, so the scan knows more about the failure.
    if (state != ScannerProgramState::Startable || reason.empty())
        Say(DescribeFailedStart(state, ScannerProgramPath()));
    else
        Say(reason.find(program) == std::string::npos ? reason + ": " + program : reason);
}

} // namespace

ScanReport RunScan(HostSession& session, const std::vector<PluginLocator>& modules, bool useSeparateProcess,
                   const RegistrySnapshot& before, const ReachPlugin& reach)
{
    const int cautionsBefore = session.Shown().cautions;
    const std::vector<PluginLocator> due = BansToTryAgain(session, modules);
    const auto start = std::chrono::steady_clock::now();

    ScanReport report;
    report.end = Scan(modules, useSeparateProcess, reach);
    std::vector<ChangedPlugin> unreached = session.Scans().Last().changes.unreached;
    // When files could not be saved, the scanner could not leave its reason either.
    const bool wentWell = report.Ended(ScanEnd::How::Done) && session.Shown().cautions == cautionsBefore;
    if (useSeparateProcess && wentWell) {
        const std::vector<PluginLocator> again = TakeUnexplained(session, modules, before);
        if (!again.empty()) {
            report.end = Scan(again, true, reach);
            std::ranges::copy(session.Scans().Last().changes.unreached, std::back_inserter(unreached));
        }
    }
    report.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();

    std::set<PluginLocator> leftOut;
    for (const ChangedPlugin& plugin : unreached)
        leftOut.insert(plugin.locator);
    report.changes = before.ChangesTo(session.Scans().Now(), modules, std::move(unreached));
    NoteTriedAgain(session, due, report);
    std::set<PluginLocator> bannedModules;
    for (const ChangedPlugin& plugin : report.changes.banned)
        bannedModules.insert(plugin.locator.ModuleLocator());
    for (const PluginLocator& module : std::set<PluginLocator>(modules.begin(), modules.end())) {
        if (bannedModules.contains(module))
            ++report.scanned;
        else if (!session.Banned().IsBanned(module) && !leftOut.contains(module))
            CountModule(session, module, report);
    }
    return report;
}

void SayWhatIsMissing(const ScanReport& report)
{
    if (report.Ended(ScanEnd::How::NotStarted)) {
        Say("the scanner process could not be started; nothing was scanned");
        SayWhyItDidNotStart(report.end.reason);
    } else if (report.Ended(ScanEnd::How::GaveUp)) {
        Say("the scanner process failed again and again without getting on; not everything was scanned "
            "(ZET_TRACE=volume=1 tells why)");
        Say(report.end.reason);
    }
    if (!report.Ended(ScanEnd::How::Done))
        return;
    for (const ChangedPlugin& plugin : report.changes.unreached) {
        Say("not scanned, the next scan tries it again: " + ForTerminal(plugin.locator.GetPath()));
        for (const std::string& line : LinesForTerminal(plugin.reason))
            Say("    " + line);
    }
}

ExitStatus StatusOf(const HostSession& session, const ScanReport& report)
{
    if (report.Ended(ScanEnd::How::Cancelled))
        return ExitStatus::Cancelled;
    if (report.IsComplete())
        return session.Status();
    // The scanner did its work to the end. So results that are missing could not be saved.
    const auto& unreached = report.changes.unreached;
    const bool scannerIsWell = report.Ended(ScanEnd::How::Done) &&
                               std::all_of(unreached.begin(), unreached.end(),
                                           [](const auto& plugin) { return plugin.reason.empty(); });
    return scannerIsWell ? ExitStatus::NotSaved : ExitStatus::ScannerNotStarted;
}

} // namespace zetaudiopluginmanager
