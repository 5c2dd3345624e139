#pragma once

#include "session/HostSession.h"

namespace zetaudiopluginmanager {

/// Opens the manager's window with the settings of the last run. The session must be one with windows.
ExitStatus RunManageCommand(HostSession& session);

} // namespace zetaudiopluginmanager
