#pragma once

#include "commands/HostSession.h"

namespace zetaudiopluginmanager {

/// Opens the manager as a host does, with what it remembers from the last run. Needs a session with windows.
ExitStatus RunManageCommand(HostSession& session);

} // namespace zetaudiopluginmanager
