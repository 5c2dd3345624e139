#pragma once

#include <string>
#include <vector>

#include "commands/HostSession.h"

namespace zetaudiopluginmanager {

/// Changes nothing when one of the files is neither there nor known.
ExitStatus RunBanCommand(HostSession& session, const std::vector<std::string>& files);

} // namespace zetaudiopluginmanager
