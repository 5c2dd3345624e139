#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "commands/HostSession.h"

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
    /// Add those, too, that are not there: on a drive that is not attached now.
    bool offline = false;
};

/// A folder is added for every technology that this system can load, and removed from every one. What is no
/// folder is not added, and neither are the others then.
ExitStatus RunFoldersCommand(HostSession& session, const FolderOptions& options, std::ostream& output);

} // namespace zetaudiopluginmanager
