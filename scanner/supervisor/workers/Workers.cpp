#include "supervisor/workers/Workers.h"

#include <exception>
#include <system_error>
#include <utility>

#include <zetcore/debug/Trace.h>
#include <zetcore/debug/faults/FaultPoint.h>

#include "supervisor/log/ScanLog.h"

namespace zetaudiofilterscan {

namespace {

std::unique_ptr<Worker> StartWorker()
{
    if (const std::error_code error = zetcore::debug::FaultError("supervisor.worker"))
        throw std::system_error(error, "the worker process could not be started");
    return std::make_unique<Worker>();
}

/// Null when none can be started, which is traced.
std::unique_ptr<Worker> TryToStartWorker()
{
    try {
        return StartWorker();
    } catch (const std::exception& error) {
        zetcore::debug::TraceLine(1, "zetaudiofilterscan", error.what());
        return nullptr;
    }
}

} // namespace

void Workers::StartAhead()
{
    resting = TryToStartWorker();
}

void Workers::Configure(WorkerSettings newSettings)
{
    settings = std::move(newSettings);
    for (Worker* started : {resting.get(), spare.get()})
        if (started)
            started->ForgetSettings();
}

std::unique_ptr<Worker> Workers::Take(ScanLog& log)
{
    // Something that a plug-in left running may have ended the worker.
    if (resting && resting->Process().HasEnded()) {
        log.Note("The worker process ended between two plug-ins; loaded in it: " +
                 NamesForLog(resting->Loaded()));
        resting.reset();
    }
    std::unique_ptr<Worker> taken = std::move(resting);
    if (!taken)
        taken = std::move(spare);
    if (!taken)
        taken = StartWorker();
    taken->Configure(settings);
    return taken;
}

std::unique_ptr<Worker> Workers::TakeUnused(ScanLog& log)
{
    if (resting && !resting->Loaded().empty())
        resting.reset();
    return Take(log);
}

void Workers::GiveBack(std::unique_ptr<Worker> worker)
{
    worker->Rest();
    resting = std::move(worker);
}

void Workers::StartSpareBeside(const Worker& worker)
{
    if (!spare && !worker.Loaded().empty())
        spare = TryToStartWorker();
}

void Workers::Kill()
{
    spare.reset();
    resting.reset();
}

} // namespace zetaudiofilterscan
