#include "commands/FoldersCommand.h"

#include <algorithm>
#include <memory>
#include <ostream>
#include <set>
#include <string_view>

#include <zetaudiofilterhost/PluginFormat.h>
#include <zetcore/string/Utf.h>

#include "report/FolderFacts.h"
#include "terminal/DisplayText.h"
#include "terminal/PluginFile.h"

namespace zetaudiopluginmanager {

namespace {

using zetaudiofilterhost::PluginFormat;
using zetaudiofilterhost::PluginFormats;
using zetaudiofilterhost::PluginTechnology;

PluginTechnology& FoldersOf(HostSession& session, const PluginFormat& format)
{
    return *session.Registry().GetPluginTechnology(format.type);
}

std::vector<std::wstring> AbsolutePaths(const std::vector<std::string>& arguments)
{
    std::vector<std::wstring> paths;
    std::transform(arguments.begin(), arguments.end(), std::back_inserter(paths), AbsolutePath);
    return paths;
}

void List(HostSession& session, std::ostream& output)
{
    std::size_t width = 0;
    for (const PluginFormat& format : PluginFormats())
        width = std::max(width, format.name.size() + 2);
    for (const PluginFormat& format : PluginFormats()) {
        const PluginTechnology& technology = FoldersOf(session, format);
        const std::string name = ForTerminal(std::wstring(format.name));
        std::for_each(
            technology.DirectoryBegin(), technology.DirectoryEnd(), [&](const std::wstring& folder) {
                output << name << std::string(width - name.size(), ' ') << ForTerminal(folder) << '\n';
            });
    }
}

/// Each folder that the next scan cannot look into, once, although several formats may have it.
void TellOfFoldersPassedOver(HostSession& session)
{
    std::set<std::wstring> seen;
    std::string text;
    for (const PluginFormat& format : PluginFormats()) {
        const PluginTechnology& technology = FoldersOf(session, format);
        std::for_each(technology.DirectoryBegin(), technology.DirectoryEnd(),
                      [&](const std::wstring& folder) {
                          const std::string_view state = FolderStateText(folder);
                          if (!state.empty() && seen.insert(folder).second)
                              text += "\n  " + ForTerminal(folder) + std::string(state);
                      });
    }
    if (!text.empty())
        Say("scans pass these folders over:" + text);
}

bool Add(HostSession& session, const std::vector<std::wstring>& folders, bool offline)
{
    bool all = true;
    for (const std::wstring& folder : folders) {
        if (IsFolder(folder) || (offline && !PathExists(folder)))
            continue;
        Say(PathExists(folder)
                ? "this is no folder: " + ForTerminal(folder)
                : "there is no such folder ('--offline' adds it all the same): " + ForTerminal(folder));
        all = false;
    }
    if (all) {
        for (const PluginFormat& format : PluginFormats())
            if (format.IsOnThisPlatform())
                FoldersOf(session, format).AddPluginDirectories(folders);
    }
    return all;
}

/// True when the technology has the folder, perhaps in another spelling of the path.
bool IsRegistered(const PluginTechnology& technology, const std::wstring& folder)
{
    return std::any_of(
        technology.DirectoryBegin(), technology.DirectoryEnd(), [&folder](const std::wstring& registered) {
            return registered == folder || AbsolutePath(zetcore::string::UTF16to8(registered)) == folder;
        });
}

bool Remove(HostSession& session, const std::vector<std::wstring>& folders)
{
    bool allRegistered = true;
    for (const std::wstring& folder : folders) {
        const bool registered = std::ranges::any_of(PluginFormats(), [&](const PluginFormat& format) {
            return IsRegistered(FoldersOf(session, format), folder);
        });
        if (!registered)
            Say("not among the plug-in folders: " + ForTerminal(folder));
        allRegistered = allRegistered && registered;
    }
    if (allRegistered) {
        for (const PluginFormat& format : PluginFormats())
            FoldersOf(session, format).RemovePluginDirectories(folders);
    }
    return allRegistered;
}

} // namespace

ExitStatus RunFoldersCommand(HostSession& session, const FolderOptions& options, std::ostream& output)
{
    switch (options.action) {
    case FolderAction::List:
        List(session, output);
        if (!session.IsQuiet())
            TellOfFoldersPassedOver(session);
        return session.Status();
    case FolderAction::Add:
        if (!Add(session, AbsolutePaths(options.folders), options.offline))
            return ExitStatus::WrongUsage;
        break;
    case FolderAction::Remove:
        if (!Remove(session, AbsolutePaths(options.folders)))
            return ExitStatus::WrongUsage;
        break;
    case FolderAction::Reset:
        session.Registry().ResetAllToDefaultFolders();
        break;
    }
    session.SaveRegistry();
    return session.Status();
}

} // namespace zetaudiopluginmanager
