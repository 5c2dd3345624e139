#pragma once

#include "WorkerArguments.h"

namespace zetaudiofilterscan {

/// Runs this process as a worker: loads the plug-ins that its supervisor names, on the calling thread, which
/// must be the process's main thread, and answers what came of each, until the supervisor is gone. Ends the
/// process itself, so that nothing that plug-ins left behind runs on the way out.
[[noreturn]] void RunWorker(const WorkerArguments& arguments);

} // namespace zetaudiofilterscan
