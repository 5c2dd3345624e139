#pragma once

#include <optional>

#include <zetcore/utility/Reason.h>

namespace zetaudiofilterscan {

/// After this call the process, and whatever it starts, can open only local sockets, through which some
/// plug-ins talk to their helpers. On Linux, opening another socket fails with EACCES. The call cannot be
/// undone. It must come while the process has one thread. The result is the reason why the network cannot be
/// refused. The scan goes on all the same.
std::optional<zetcore::utility::Reason> RefuseNetwork();

} // namespace zetaudiofilterscan
