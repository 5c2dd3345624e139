#include "commands/BanCommand.h"

#include "terminal/DisplayText.h"
#include "terminal/PluginFile.h"

namespace zetaudiopluginmanager {

ExitStatus RunBanCommand(HostSession& session, const std::vector<std::string>& files)
{
    std::vector<zetaudiofilterhost::PluginLocator> modules;
    bool allThere = true;
    for (const std::string& file : files) {
        const auto module = LocatorOfArgument(session.Registry(), session.Banned(), file);
        if (session.Banned().IsBanned(module)) {
            Say("already banned: " + ForTerminal(module.GetPath()));
        } else if (session.Registry().FindModule(module).empty() && !PathExists(module.GetPath())) {
            Say("there is no such plug-in file: " + ForTerminal(module.GetPath()));
            allThere = false;
        } else if (module.GetTechnologyType() == zetaudiofilterhost::TechnologyType::Unknown) {
            Say("not named like a plug-in (" + ModuleExtensions() + "): " + ForTerminal(module.GetPath()));
            allThere = false;
        } else {
            modules.push_back(module);
        }
    }
    if (!allThere)
        return ExitStatus::WrongUsage;
    for (const auto& module : modules)
        session.Banned().AddBannedPlugin(
            module,
            zetaudiopluginhost::BanFor({{.kind = zetaudiopluginhost::PluginFailure::Kind::BannedByUser}}));
    if (!modules.empty())
        session.SaveBannedList();
    return session.Status();
}

} // namespace zetaudiopluginmanager
