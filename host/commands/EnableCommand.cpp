#include "commands/EnableCommand.h"

#include <algorithm>

#include "terminal/DisplayText.h"
#include "terminal/PluginFile.h"

namespace zetaudiopluginmanager {

namespace {

using zetaudiofilterhost::ModuleStatus;
using InfoPtr = zetaudiofilterhost::PluginModuleInfoManager::InfoPtr;

/// The working records of one file. When there are none, it says why.
std::vector<InfoPtr> WorkingRecords(const HostSession& session, const std::string& file)
{
    const auto module = LocatorOfArgument(session.Registry(), session.Banned(), file);
    const std::string shown = ForTerminal(module.GetPath());
    if (session.Banned().IsBanned(module)) {
        Say("banned ('reload' scans it again): " + shown);
        return {};
    }
    std::vector<InfoPtr> records = session.Registry().FindModule(module);
    if (records.empty()) {
        Say("not a known plug-in ('scan' looks for new ones): " + shown);
        return {};
    }
    const std::string reason = records.front()->GetReason();
    std::erase_if(records, [](const InfoPtr& info) { return info->GetStatus() != ModuleStatus::Working; });
    if (records.empty())
        Say("holds no working plug-in ('scan' with its name scans it again): " + shown +
            (reason.empty() ? "" : " (" + reason + ")"));
    return records;
}

} // namespace

ExitStatus RunEnableCommand(HostSession& session, const EnableOptions& options)
{
    std::vector<InfoPtr> records;
    if (options.all)
        records.assign(session.Registry().PluginInfoBegin(), session.Registry().PluginInfoEnd());
    bool allKnown = true;
    for (const std::string& file : options.files) {
        const std::vector<InfoPtr> ofFile = WorkingRecords(session, file);
        allKnown = allKnown && !ofFile.empty();
        records.insert(records.end(), ofFile.begin(), ofFile.end());
    }
    if (!allKnown)
        return ExitStatus::WrongUsage;
    for (const InfoPtr& info : records)
        info->SetEnabled(options.enabled);
    session.SaveRegistry();
    return session.Status();
}

} // namespace zetaudiopluginmanager
