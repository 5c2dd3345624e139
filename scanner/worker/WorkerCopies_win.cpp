#include "WorkerCopies.h"

#include "ExitCodes.h"
#include "WorkerProcessSetup.h"

namespace zetaudiofilterscan {

void MakeCopies(const WorkerArguments&)
{
    EndWorkerProcess(exitWrongUsage);
}

} // namespace zetaudiofilterscan
