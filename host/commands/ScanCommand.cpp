#include "commands/ScanCommand.h"

#include <ostream>

#include <zetaudiofilterhost/PluginFormat.h>

#include "commands/Console.h"
#include "commands/DisplayText.h"
#include "commands/JsonOutput.h"
#include "commands/PluginFile.h"
#include "commands/ScanRun.h"

namespace zetaudiopluginmanager {

namespace {

using zetaudiofilterhost::PluginFormat;
using zetaudiofilterhost::PluginFormats;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiofilterhost::TechnologyType;

/// Finds in this folder as a search of the registered folders does.
std::vector<PluginLocator> PluginsInFolder(const std::wstring& folder)
{
    PluginModuleInfoManager search;
    for (const PluginFormat& format : PluginFormats())
        search.GetPluginTechnology(format.type)->SetPluginDirectories({folder});
    std::vector<PluginLocator> vanished;
    return search.CollectPotentialPlugins(false, vanished);
}

/// A folder with plug-ins, and not a bundle, which is one itself.
bool IsFolderOfPlugins(const PluginLocator& named)
{
    const PluginFormat* format = zetaudiofilterhost::FindPluginFormat(named.GetTechnologyType());
    return IsFolder(named.GetPath()) && !(format && format->files.bundle);
}

/// The modules to scan by name; nothing when one of them is not there.
std::optional<std::vector<PluginLocator>> ModulesToScan(const HostSession& session,
                                                        const std::vector<std::string>& files)
{
    std::vector<PluginLocator> modules;
    bool allThere = true;
    for (const std::string& file : files) {
        const PluginLocator module = LocatorOfArgument(session, file);
        const std::string shown = ForTerminal(module.GetPath());
        std::vector<PluginLocator> found{module};
        if (!PathExists(module.GetPath())) {
            Say("there is no such plug-in file: " + shown);
            allThere = false;
        } else if (IsFolderOfPlugins(module)) {
            found = PluginsInFolder(module.GetPath());
            if (found.empty())
                Say("nothing in this folder looks like a plug-in: " + shown);
        } else if (module.GetTechnologyType() == TechnologyType::None) {
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
    const ScanReport report = RunScan(session, modules, !options.inProcess, before);
    output << (options.json ? FormatScanReportAsJson(report)
                            : FormatScanReport(report, {ConsoleShowsColour(), session.IsQuiet()}));
    SayWhatIsMissing(report);
    return StatusOf(session, report);
}

} // namespace zetaudiopluginmanager
