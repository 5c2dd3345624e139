#include <algorithm>
#include <ostream>

#include "commands/ScanCommand.h"
#include "commands/ScanRun.h"
#include "terminal/Console.h"
#include "terminal/DisplayText.h"
#include "terminal/PluginFile.h"

namespace zetaudiopluginmanager {

namespace {

using zetaudiofilterhost::PluginLocator;
using zetaudiopluginhostui::ScanEnd;

/// The bans of one module: that of the module itself, or those of its sub-components.
std::vector<PluginLocator> BannedOfModule(const HostSession& session, const PluginLocator& module)
{
    std::vector<PluginLocator> locators;
    std::copy_if(session.Banned().BannedBegin(), session.Banned().BannedEnd(), std::back_inserter(locators),
                 [&module](const PluginLocator& banned) { return banned.ModuleLocator() == module; });
    return locators;
}

ScanReport Reload(HostSession& session, const PluginLocator& module)
{
    const RegistrySnapshot before = session.Scans().Now();
    for (const PluginLocator& locator : BannedOfModule(session, module))
        session.Banned().RemoveBannedPlugin(locator);
    session.SaveBannedList();

    std::vector<PluginLocator> vanished;
    session.Registry().CollectPotentialPlugins(true, vanished);
    // A plug-in that lies in no registered folder counts as vanished, too, but its file can be scanned.
    const bool gone = std::find(vanished.begin(), vanished.end(), module) != vanished.end() &&
                      session.Registry().IsFileGone(module);
    if (!gone)
        return RunScan(session, {module}, true, before);
    session.Registry().RemovePluginLocators({module});
    session.SaveRegistry();
    ScanReport report;
    report.changes = before.ChangesTo(session.Scans().Now(), {module}, {});
    return report;
}

void SayWhatIsBannedAgain(const std::vector<PluginLocator>& plugins)
{
    for (const PluginLocator& locator : plugins)
        Say("not scanned, and therefore still banned: " + ForTerminal(locator.GetPath()));
}

std::vector<PluginLocator> WithoutDoubles(std::vector<PluginLocator> modules)
{
    std::sort(modules.begin(), modules.end());
    modules.erase(std::unique(modules.begin(), modules.end()), modules.end());
    return modules;
}

std::optional<std::vector<PluginLocator>> AllBannedModules(const HostSession& session)
{
    std::vector<PluginLocator> modules;
    std::transform(session.Banned().BannedBegin(), session.Banned().BannedEnd(), std::back_inserter(modules),
                   [](const PluginLocator& banned) { return banned.ModuleLocator(); });
    return WithoutDoubles(std::move(modules));
}

/// The modules to reload. No list at all when one of the files is not banned.
std::optional<std::vector<PluginLocator>> BannedModules(const HostSession& session,
                                                        const std::vector<std::string>& files)
{
    std::vector<PluginLocator> modules;
    bool allBanned = true;
    for (const std::string& file : files) {
        modules.push_back(LocatorOfArgument(session.Registry(), session.Banned(), file));
        if (BannedOfModule(session, modules.back()).empty()) {
            Say("not banned: " + ForTerminal(modules.back().GetPath()));
            allBanned = false;
        }
    }
    return allBanned ? std::optional(WithoutDoubles(std::move(modules))) : std::nullopt;
}

} // namespace

ExitStatus RunReloadCommand(HostSession& session, const ReloadOptions& options, std::ostream& output)
{
    const auto named = options.all ? AllBannedModules(session) : BannedModules(session, options.files);
    if (!named)
        return ExitStatus::WrongUsage;
    if (named->empty())
        Say("no plug-in is banned");

    ScanReport report;
    for (auto module = named->begin(); module != named->end(); ++module) {
        const ScanReport outcome = Reload(session, *module);
        report.Add(outcome);
        if (outcome.IsComplete() && !outcome.Ended(ScanEnd::How::Cancelled))
            continue;
        SayWhatIsBannedAgain(session.Scans().Last().bannedAgain);
        // A user who has cancelled wants no more scans, and a scanner that did not start would not start now.
        if (outcome.Ended(ScanEnd::How::Cancelled) || outcome.Ended(ScanEnd::How::NotStarted)) {
            const std::vector<PluginLocator> rest(module + 1, named->end());
            SayWhatIsBannedAgain(rest);
            const RegistrySnapshot now = session.Scans().Now();
            for (const PluginLocator& locator : rest)
                report.changes.unreached.push_back(now.Named(locator, outcome.end.reason));
            break;
        }
    }
    output << FormatScanReport(report, {ConsoleShowsColour(), session.IsQuiet(), false});
    SayWhatIsMissing(report);
    return StatusOf(session, report);
}

} // namespace zetaudiopluginmanager
