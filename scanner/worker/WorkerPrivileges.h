#pragma once

#include <optional>

#include <zetcore/utility/Reason.h>

namespace zetaudiofilterscan {

/// From here on the process, and what it starts, can open no socket but local ones, which is what plug-ins
/// that talk to their helpers use; on Linux, opening another fails with EACCES. It cannot be undone. Call it
/// while the process has one thread. Gives the reason why it cannot be had, which is none not to scan.
std::optional<zetcore::utility::Reason> RefuseNetwork();

} // namespace zetaudiofilterscan
