#include "commands/ScanRun.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <memory>
#include <set>

#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginScan.h>

#include "commands/Console.h"
#include "commands/DisplayText.h"

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

void CountModule(const HostSession& session, const PluginLocator& module, ScanReport& report)
{
    bool wasScanned = false;
    for (const auto& record : session.Registry().FindModule(module)) {
        const ModuleStatus status = record->GetStatus();
        wasScanned = wasScanned || status != ModuleStatus::Unscanned;
        if (status == ModuleStatus::Working)
            ++report.found;
        else if (status == ModuleStatus::Failed)
            report.failed.push_back({module.GetPath(), record->GetReason()});
        else if (status == ModuleStatus::Unscanned)
            report.notScanned.push_back({module.GetPath(), record->GetReason()});
    }
    report.scanned += wasScanned ? 1 : 0;
}

/// False when it gave up before everything was scanned.
bool Scan(const std::vector<PluginLocator>& modules, bool useSeparateProcess)
{
    std::optional<OutputDiversion> diversion;
    if (!useSeparateProcess)
        diversion.emplace();
    const auto scan = std::make_shared<AudioPluginScan>(nullptr);
    scan->ScanForPlugins(nullptr, modules, !AudioPluginManager::IsVST2ShellSkippingFeatureEnabled(),
                         AudioPluginManager::IsQuickEffectScanFeatureEnabled(), useSeparateProcess);
    return scan->GetEnd().how != ScanEnd::How::GaveUp;
}

/// A scanner that a plug-in brought down leaves the reason. One without was brought down from outside, and
/// the plug-in that it was at, which is banned as the others are, gets a second scan. Not a third.
bool ScanUnexplainedAgain(HostSession& session, const std::vector<PluginLocator>& modules,
                          const std::vector<PluginLocator>& bannedBefore)
{
    const std::vector<PluginLocator> bannedNow = BannedLocators(session);
    std::vector<PluginLocator> unexplained;
    for (const PluginLocator& locator : bannedNow) {
        const auto info = session.Banned().GetBanInfo(locator);
        // Another host's bans may have come in, too.
        const bool isOurs = std::find(modules.begin(), modules.end(), locator) != modules.end() &&
                            !std::binary_search(bannedBefore.begin(), bannedBefore.end(), locator);
        if (isOurs && info && info->reason.empty())
            unexplained.push_back(locator);
    }
    if (unexplained.empty())
        return true;
    for (const PluginLocator& locator : unexplained) {
        Say("the scanner ended and left no reason; scanned again: " + ForTerminal(locator.GetPath()));
        session.Banned().RemoveBannedPlugin(locator);
    }
    session.SaveBannedList();
    return Scan(unexplained, true);
}

} // namespace

std::optional<ScanReport> RunScan(HostSession& session, const std::vector<PluginLocator>& modules,
                                  bool useSeparateProcess)
{
    const std::vector<PluginLocator> bannedBefore = BannedLocators(session);
    const auto shownBefore = session.Shown();
    const auto start = std::chrono::steady_clock::now();

    bool complete = Scan(modules, useSeparateProcess);
    // Where nothing can be saved, a reason could not be left either.
    const bool wentWell = complete && session.Shown().cancelled == shownBefore.cancelled &&
                          session.Shown().cautions == shownBefore.cautions;
    if (useSeparateProcess && wentWell)
        complete = ScanUnexplainedAgain(session, modules, bannedBefore);

    ScanReport report;
    report.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    if (session.Shown().progressDialogs == shownBefore.progressDialogs)
        return std::nullopt;
    report.gaveUp = !complete;
    report.cancelled = session.Shown().cancelled > shownBefore.cancelled;

    // The scan took these modules out of the registry first: what has a record now has been scanned.
    const std::vector<PluginLocator> bannedNow = BannedLocators(session);
    std::vector<PluginLocator> newlyBanned;
    std::set_difference(bannedNow.begin(), bannedNow.end(), bannedBefore.begin(), bannedBefore.end(),
                        std::back_inserter(newlyBanned));
    std::set<PluginLocator> bannedModules;
    for (const PluginLocator& locator : newlyBanned) {
        bannedModules.insert(locator.ModuleLocator());
        const auto info = session.Banned().GetBanInfo(locator);
        report.banned.push_back({locator.GetPath(), info ? info->reason : std::string()});
    }
    for (const PluginLocator& module : std::set<PluginLocator>(modules.begin(), modules.end())) {
        if (bannedModules.contains(module))
            ++report.scanned;
        else if (!session.Banned().IsBanned(module))
            CountModule(session, module, report);
    }
    if (!newlyBanned.empty())
        session.SaveBannedList();
    return report;
}

void SayWhatIsMissing(const ScanReport& report)
{
    if (report.gaveUp)
        Say("the scanner process failed again and again without getting on; not everything was scanned "
            "(ZET_TRACE=volume=1 tells why)");
    for (const ScanReport::Entry& entry : report.notScanned) {
        Say("not scanned, the next scan tries it again: " + ForTerminal(entry.path));
        for (const std::string& line : LinesForTerminal(entry.reason))
            Say("    " + line);
    }
}

} // namespace zetaudiopluginmanager
