#include "commands/ScanCommand.h"

#include <ostream>

#include <zetaudiofilterhost/PluginFormat.h>

#include "commands/ScanRun.h"
#include "output/JsonOutput.h"
#include "terminal/Console.h"
#include "terminal/DisplayText.h"
#include "terminal/PluginFile.h"

namespace zetaudiopluginmanager {

namespace {

using zetaudiofilterhost::PluginFormat;
using zetaudiofilterhost::PluginFormats;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiofilterhost::TechnologyType;

/// Searches this folder as registered folders are searched.
std::vector<PluginLocator> PluginsInFolder(const std::wstring& folder)
{
    PluginModuleInfoManager search;
    for (const PluginFormat& format : PluginFormats())
        search.GetPluginTechnology(format.type)->SetPluginDirectories({folder});
    std::vector<PluginLocator> vanished;
    return search.CollectPotentialPlugins(false, vanished);
}

/// True for a folder that holds plug-ins. A bundle is a folder, too, but is itself a plug-in.
bool IsFolderOfPlugins(const PluginLocator& named)
{
    const PluginFormat* format = zetaudiofilterhost::FindPluginFormat(named.GetTechnologyType());
    return IsFolder(named.GetPath()) && !(format && format->files.bundle);
}

/// The modules that the files and folders stand for. No list at all when one is missing
/// or is no plug-in.
std::optional<std::vector<PluginLocator>> ModulesToScan(const HostSession& session,
                                                        const std::vector<std::string>& files)
{
    std::vector<PluginLocator> modules;
    bool allThere = true;
    for (const std::string& file : files) {
        const PluginLocator module = LocatorOfArgument(session.Registry(), session.Banned(), file);
        const std::string shown = ForTerminal(module.GetPath());
        std::vector<PluginLocator> found{module};
        if (!PathExists(module.GetPath())) {
            Say("there is no such plug-in file: " + shown);
            allThere = false;
        } else if (IsFolderOfPlugins(module)) {
            found = PluginsInFolder(module.GetPath());
            if (found.empty())
                Say("nothing in this folder looks like a plug-in: " + shown);
        } else if (module.GetTechnologyType() == TechnologyType::Unknown) {
            Say("not named like a plug-in (" + ModuleExtensions() + "): " + shown);
            allThere = false;
        }
        for (const PluginLocator& each : found) {
            if (session.Banned().IsBanned(each) && !session.Banned().IsDueAgain(each))
                Say("banned, and therefore not scanned ('reload' scans it): " + ForTerminal(each.GetPath()));
            else
                modules.push_back(each);
        }
    }
    return allThere ? std::optional(std::move(modules)) : std::nullopt;
}

ScanReport ScanWithLines(HostSession& session, const std::vector<PluginLocator>& modules,
                         const RegistrySnapshot& before, std::ostream& output)
{
    // Whoever reads the lines waits for each.
    ScanOutcomes outcomes(
        session.Registry(), session.Banned(), modules,
        [&output](const ScanOutcome& outcome) { output << FormatScanOutcomeLine(outcome) << std::flush; });
    ScanReport report = RunScan(session, modules, true, before,
                                [&outcomes](const PluginLocator& plugin) { outcomes.Reach(plugin); });
    outcomes.End(report);
    return report;
}

} // namespace

ExitStatus RunScanCommand(HostSession& session, const ScanOptions& options, std::ostream& output)
{
    const RegistrySnapshot before = session.Scans().Now();
    std::vector<PluginLocator> modules;
    if (options.files.empty()) {
        std::vector<PluginLocator> vanished;
        modules = session.Registry().CollectPotentialPlugins(!options.rescan, vanished);
        session.Registry().RemovePluginLocators(vanished);
    } else if (auto named = ModulesToScan(session, options.files)) {
        modules = std::move(*named);
    } else {
        return ExitStatus::WrongUsage;
    }
    const ScanReport report = options.progress.empty() ? RunScan(session, modules, !options.inProcess, before)
                                                       : ScanWithLines(session, modules, before, output);
    if (!options.progress.empty())
        output << FormatScanSummaryLine(report);
    else
        output << (options.json ? FormatScanReportAsJson(report)
                                : FormatScanReport(report, {ConsoleShowsColour(), session.IsQuiet(), true}));
    SayWhatIsMissing(report);
    return StatusOf(session, report);
}

} // namespace zetaudiopluginmanager
