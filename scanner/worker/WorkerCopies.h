#pragma once

#include "WorkerArguments.h"

namespace zetaudiofilterscan {

/// Makes copies of this process when its supervisor asks for one, until the supervisor is gone, and then ends
/// the process. It returns in the copies only: each is a child of the supervisor with a session of its own,
/// and has the output, the channel and the page that came with the request. A copy costs a third of what it
/// costs to start the program, and nothing of a plug-in is ever in it. Call it first, while the process has
/// one thread. Windows cannot copy a process, so nobody starts this program there for that.
void MakeCopies(const WorkerArguments& arguments);

} // namespace zetaudiofilterscan
