#include "supervisor/verdicts/EntityTrial.h"

#include <algorithm>
#include <exception>
#include <utility>

#include <zetaudiofilterhost/PluginModuleInfo.h>
#include <zetcore/debug/Trace.h>

#include "supervisor/verdicts/DisplayLoss.h"
#include "supervisor/verdicts/PluginFailed.h"

namespace zetaudiofilterscan {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiopluginhost::ScanOutcome;

namespace {

/// The plug-in was alone in its process. Then the worker's own word and a whole time limit are answer enough.
bool MayPassAlone(const WorkerFailure& failure)
{
    return failure.kind != WorkerFailure::Kind::TookTooLong &&
           failure.kind != WorkerFailure::Kind::Misbehaved;
}

bool WasLoaded(const ScanOutcome& outcome)
{
    return !std::ranges::all_of(outcome.infos, [](const auto& info) {
        return info->GetStatus() == ModuleStatus::NotAPlugin || info->GetStatus() == ModuleStatus::Unreadable;
    });
}

} // namespace

EntityTrial::EntityTrial(const PluginLocator& plugin, Workers& allWorkers, ScanLog& scanLog,
                         WorkerListener& workerListener)
    : locator(plugin), workers(allWorkers), log(scanLog), listener(workerListener), output(scanLog, plugin),
      stamp(zetaudiofilterhost::GetModuleFileStamp(plugin))
{
    Request(&Workers::Take);
}

void EntityTrial::Request(TakeWorker take)
{
    try {
        worker = (workers.*take)(log);
    } catch (const std::exception& error) {
        throw NoVerdict(error.what());
    }
    worker->Request(locator, output);
}

ScanOutcome EntityTrial::Finish()
{
    const std::vector<PluginLocator> loadedBefore = worker->Loaded();
    Verdict verdict = GetVerdict();
    if (const auto* failure = std::get_if<WorkerFailure>(&verdict))
        verdict = ConfirmFailure(*failure, loadedBefore);
    if (const auto* failure = std::get_if<WorkerFailure>(&verdict)) {
        const std::string reason = DescribeFailure(*failure, output.LastLine());
        log.Note(NameForLog(locator) + " " + reason + ".");
        throw PluginFailed(locator, {reason, 0, stamp, failure->couldNotLoad});
    }
    return std::get<ScanOutcome>(std::move(verdict));
}

Verdict EntityTrial::ConfirmFailure(const WorkerFailure& first,
                                    const std::vector<PluginLocator>& loadedBefore)
{
    const bool wasAlone = loadedBefore.empty();
    if (wasAlone && !MayPassAlone(first))
        return first;
    const std::string name = NameForLog(locator);
    const std::string reason = DescribeFailure(first, output.LastLine());
    log.Note(name + " " + reason +
             (wasAlone ? "" : "; loaded before it in the same process: " + NamesForLog(loadedBefore)) +
             ". It is tried once more, alone.");
    Verdict second = GetVerdictAlone();
    if (std::holds_alternative<WorkerFailure>(second))
        return second;
    log.Note(name + " passed when it was alone.");

    // Another plug-in may have brought it down, or somebody may have ended the worker. But the plug-in may
    // also crash only now and then.
    Verdict third = GetVerdictAlone();
    if (const auto* failure = std::get_if<WorkerFailure>(&third)) {
        const std::string outcomes = "is flaky: it " + reason +
                                     "; tried alone, it passed; tried once more, it " +
                                     DescribeFailure(*failure, output.LastLine());
        log.Note(name + " " + outcomes + ".");
        throw PluginFailed(locator, {outcomes, 0, stamp, false});
    }
    zetcore::debug::TraceLine(2, "zetaudiofilterscan",
                              name + " " + reason +
                                  ", but passed alone; loaded before it: " + NamesForLog(loadedBefore));
    return third;
}

Verdict EntityTrial::GetVerdictAlone()
{
    output.Restart();
    Request(&Workers::TakeUnused);
    return GetVerdict();
}

Verdict EntityTrial::GetVerdict()
{
    // A worker that ends before it has begun says nothing about the plug-in. The end of the display that a
    // plug-in talked to says nothing either, nor does a failure that follows without a display.
    bool lostDisplay = false;
    for (int tries = 0; tries < 3; ++tries) {
        std::optional<Verdict> verdict = RunInWorker();
        if (verdict && !lostDisplay && EndedWithItsDisplay(*verdict)) {
            lostDisplay = true;
            log.Note(NameForLog(locator) +
                     " ended with the display that it talked to. It is tried once more.");
            output.Restart();
        } else if (verdict && lostDisplay && std::holds_alternative<WorkerFailure>(*verdict)) {
            break;
        } else if (verdict) {
            return std::move(*verdict);
        }
    }
    throw NoVerdict(lostDisplay ? "the display that it talked to went away"
                                : "the worker processes end before they load anything");
}

bool EntityTrial::EndedWithItsDisplay(const Verdict& verdict) const
{
    const auto* failure = std::get_if<WorkerFailure>(&verdict);
    return failure &&
           (failure->kind == WorkerFailure::Kind::Exited || failure->kind == WorkerFailure::Kind::Crashed) &&
           TellsOfLostDisplay(output.Tail());
}

std::optional<Verdict> EntityTrial::RunInWorker()
{
    if (!worker)
        Request(&Workers::Take);
    workers.StartSpareBeside(*worker);
    Verdict verdict = listener.Listen(*worker, locator);
    std::unique_ptr<Worker> asked = std::move(worker);
    if (const auto* outcome = std::get_if<ScanOutcome>(&verdict)) {
        if (WasLoaded(*outcome))
            asked->NoteLoaded(locator);
        workers.GiveBack(std::move(asked));
    } else if (!asked->HasBegun()) {
        return std::nullopt;
    }
    return verdict;
}

} // namespace zetaudiofilterscan
