#pragma once

#include <memory>

#include "WorkerMessages.h"
#include "supervisor/workers/Worker.h"

namespace zetaudiofilterscan {

class ScanLog;

/// The workers that are at rest. Whoever has a plug-in scanned takes one, owns it meanwhile, and gives it
/// back when it is still of use. Scanning thread.
class Workers
{
  public:
    /// Starts the first worker, so that it is there when it is needed. A failure is traced, and whoever takes
    /// one tries again.
    void StartAhead();
    /// For the workers that are taken from now on.
    void Configure(WorkerSettings newSettings);

    /// A worker with its settings, which is started when none is at rest. The log is told of one that ended
    /// at rest. Throws `std::system_error`.
    std::unique_ptr<Worker> Take(ScanLog& log);
    /// The same, for a worker that has loaded nothing. A worker at rest that has loaded plug-ins is killed.
    std::unique_ptr<Worker> TakeUnused(ScanLog& log);
    void GiveBack(std::unique_ptr<Worker> worker);
    /// Starts another worker while this one, which has loaded plug-ins, scans the next: a failure then does
    /// not wait for one.
    void StartSpareBeside(const Worker& worker);

    /// Kills those at rest, with all of their groups.
    void Kill();

  private:
    WorkerSettings settings;
    std::unique_ptr<Worker> resting;
    /// A worker that has loaded nothing.
    std::unique_ptr<Worker> spare;
};

} // namespace zetaudiofilterscan
