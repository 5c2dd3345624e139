#pragma once

#include <cstdint>
#include <string>

namespace zetaudiofilterscan {

/// What a worker may have of the machine, beside what `SetUpWorkerProcess` takes away. What cannot be had is
/// no reason not to scan: each gives a text for the trace, empty when all went well.

/// Bounds on open files and processes, wide enough for any plug-in, and not for one that runs wild.
std::string LimitResources();

/// From here on the process, and what it starts, can open no socket but local ones, which is what plug-ins
/// that talk to their helpers use; on Linux, opening another fails with EACCES. It cannot be undone. Call it
/// while the process has one thread.
std::string RefuseNetwork();

} // namespace zetaudiofilterscan
