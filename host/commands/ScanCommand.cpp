#include "commands/ScanCommand.h"

#include <ostream>

#include "commands/Console.h"
#include "commands/DisplayText.h"
#include "commands/JsonOutput.h"
#include "commands/PluginFile.h"
#include "commands/ScanRun.h"
#include "commands/ScannerProgram.h"

namespace zetaudiopluginmanager {

namespace {

using zetaudiofilterhost::PluginLocator;

/// The modules to scan by name; nothing when one of them is not there.
std::optional<std::vector<PluginLocator>> ModulesToScan(const HostSession& session,
                                                        const std::vector<std::string>& files)
{
    std::vector<PluginLocator> modules;
    bool allThere = true;
    for (const std::string& file : files) {
        const PluginLocator module = LocatorOfArgument(file);
        if (!PathExists(module.GetPath())) {
            Say("there is no such plug-in file: " + ForTerminal(module.GetPath()));
            allThere = false;
        } else if (session.Banned().IsBanned(module)) {
            Say("banned, and therefore not scanned ('reload' scans it): " + ForTerminal(module.GetPath()));
        }
        modules.push_back(module);
    }
    return allThere ? std::optional(std::move(modules)) : std::nullopt;
}

} // namespace

ExitStatus RunScanCommand(HostSession& session, const ScanOptions& options, std::ostream& output)
{
    std::vector<PluginLocator> modules, vanished;
    if (options.files.empty()) {
        modules = session.Registry().CollectPotentialPlugins(!options.rescan, vanished);
        session.Registry().RemovePluginLocators(vanished);
    } else if (auto named = ModulesToScan(session, options.files)) {
        modules = std::move(*named);
    } else {
        return ExitStatus::WrongUsage;
    }

    const std::optional<ScanReport> outcome = RunScan(session, modules, !options.inProcess);
    ScanReport report = outcome.value_or(ScanReport{});
    report.gone = vanished.size();
    if (options.json)
        output << FormatScanReportAsJson(report);
    else if (outcome)
        output << FormatScanReport(report, ConsoleShowsColour());
    if (!outcome) {
        Say("the scanner process could not be started; nothing was scanned");
        Say(DescribeFailedStart(LookAtScannerProgram(), ScannerProgramPath()));
        return ExitStatus::ScannerNotStarted;
    }
    SayWhatIsMissing(report);
    if (report.cancelled)
        return ExitStatus::Cancelled;
    return report.IsComplete() ? session.Status() : ExitStatus::ScannerNotStarted;
}

} // namespace zetaudiopluginmanager
