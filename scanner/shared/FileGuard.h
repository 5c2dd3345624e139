#pragma once

#include <optional>

#include <zetcore/utility/Reason.h>

namespace zetaudiofilterscan {

/// The version of what keeps a process from changing files: of Landlock on Linux. 0 stands for a system
/// without it.
int FileGuardVersion();

/// Why this system cannot keep plug-ins from changing files although others of its kind can, with what to do.
/// No Windows can, so that there is no reason there.
std::optional<zetcore::utility::Reason> LackOfFileGuard();

} // namespace zetaudiofilterscan
