#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "session/HostSession.h"

namespace zetaudiopluginmanager {

enum class FolderAction
{
    List,
    Add,
    Remove,
    Reset,
};

struct FolderOptions
{
    FolderAction action = FolderAction::List;
    std::vector<std::string> folders;
    /// Adds folders that do not exist, too: they may be on a drive that is not attached now.
    bool offline = false;
};

/// Lists or changes the folders that are scanned. A folder is added for every technology that this system can
/// load, and removed from every technology. When an argument is no folder, nothing is added.
ExitStatus RunFoldersCommand(HostSession& session, const FolderOptions& options, std::ostream& output);

} // namespace zetaudiopluginmanager
