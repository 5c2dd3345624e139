#pragma once

#include <string>

namespace zetaudiofilterscan {

/// From here on the process, and what it starts, can open no socket but local ones, which is what plug-ins
/// that talk to their helpers use; on Linux, opening another fails with EACCES. It cannot be undone. Call it
/// while the process has one thread. Gives a text for the trace, empty when all went well: that it cannot be
/// had is no reason not to scan.
std::string RefuseNetwork();

} // namespace zetaudiofilterscan
