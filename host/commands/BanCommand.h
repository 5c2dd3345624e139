#pragma once

#include <string>
#include <vector>

#include "session/HostSession.h"

namespace zetaudiopluginmanager {

/// Bans the files. When one of them neither exists nor is known, nothing changes.
ExitStatus RunBanCommand(HostSession& session, const std::vector<std::string>& files);

} // namespace zetaudiopluginmanager
