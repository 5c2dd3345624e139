#include <algorithm>
#include <exception>
#include <stdexcept>

#include <zetaudiofilterhost/PluginModuleInfo.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/string/Utf.h>

#include "ExitCodes.h"
#include "supervisor/verdicts/ConnectionClosed.h"
#include "supervisor/verdicts/DisplayLoss.h"
#include "supervisor/verdicts/EntityWorker.h"
#include "supervisor/verdicts/ReadOutcome.h"

// A plug-in in one worker: the request, the wait, and the verdict on what comes.
namespace zetaudiofilterscan {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiopluginhost::ScanOutcome;

namespace {

// A process that ends closes its channel first; this is how long it may take from there.
constexpr std::chrono::seconds maxWaitForEnd{1};

bool WasLoaded(const ScanOutcome& outcome)
{
    return !std::ranges::all_of(outcome.infos, [](const auto& info) {
        return info->GetStatus() == ModuleStatus::NotAPlugin || info->GetStatus() == ModuleStatus::Unreadable;
    });
}

} // namespace

EntityScanner::Verdict EntityScanner::GetVerdict(const PluginLocator& locator)
{
    // A worker that ends before it has begun says nothing about the plug-in; nor does the end of the display
    // that a plug-in talked to, or what becomes of it afterwards without one.
    bool lostDisplay = false;
    for (int workers = 0; workers < 3; ++workers) {
        std::optional<Verdict> verdict = RunInWorker(locator);
        if (verdict && !lostDisplay && EndedWithItsDisplay(*verdict)) {
            lostDisplay = true;
            log->Note(zetcore::string::UTF16to8(locator.ToString()) +
                      " ended with the display that it talked to. It is tried once more.");
            log->BeginEntity(locator);
        } else if (verdict && lostDisplay && std::holds_alternative<WorkerFailure>(*verdict)) {
            break;
        } else if (verdict) {
            return std::move(*verdict);
        }
    }
    throw NoVerdict(lostDisplay ? "the display that it talked to went away"
                                : "the worker processes end before they load anything");
}

bool EntityScanner::EndedWithItsDisplay(const Verdict& verdict) const
{
    const auto* failure = std::get_if<WorkerFailure>(&verdict);
    return failure &&
           (failure->kind == WorkerFailure::Kind::Exited || failure->kind == WorkerFailure::Kind::Crashed) &&
           TellsOfLostDisplay(log->Tail());
}

std::optional<EntityScanner::Verdict> EntityScanner::RunInWorker(const PluginLocator& locator)
{
    if (requested != locator) {
        EnsureWorker();
        RequestEntity(locator);
    }
    requested.reset();
    StartSpare();
    Verdict verdict = WaitForAnswer(locator);
    if (auto* outcome = std::get_if<ScanOutcome>(&verdict)) {
        if (WasLoaded(*outcome))
            worker->loaded.push_back(locator);
        return verdict;
    }
    const bool hasBegun = worker->process->Entity() == entityNumber;
    worker.reset();
    if (!hasBegun)
        return std::nullopt;
    return verdict;
}

EntityScanner::Verdict EntityScanner::WaitForAnswer(const PluginLocator& locator)
{
    const auto begun = std::chrono::steady_clock::now();
    const auto deadline = begun + entityLimit;
    try {
        for (;;) {
            switch (worker->process->Wait(interrupt, deadline)) {
            case WorkerProcess::Event::Message:
                if (std::optional<Verdict> verdict = ReadReport(locator))
                    return std::move(*verdict);
                break;
            case WorkerProcess::Event::Interrupted:
                interrupt.Reset();
                if (connectionClosed())
                    throw ConnectionClosed();
                break;
            case WorkerProcess::Event::Ended:
                return HowItEnded();
            case WorkerProcess::Event::ChannelClosed:
                return AfterChannelClosed();
            case WorkerProcess::Event::DeadlinePassed: {
                // The limit that is told is the one that was waited for.
                WorkerFailure failure{
                    WorkerFailure::Kind::TookTooLong,
                    0,
                    PhaseFromNumber(worker->process->Phase()),
                    {},
                    std::chrono::duration_cast<std::chrono::milliseconds>(deadline - begun)};
                worker->process->Finish();
                return failure;
            }
            }
        }
    } catch (const std::length_error& error) {
        worker->process->Finish();
        return WorkerFailure{WorkerFailure::Kind::WrongAnswer, 0, {}, error.what(), {}};
    }
}

// The result is empty when the message was not the answer.
std::optional<EntityScanner::Verdict> EntityScanner::ReadReport(const PluginLocator& locator)
{
    WorkerFailure failure{WorkerFailure::Kind::WrongAnswer, 0, {}, {}, {}};
    try {
        const WorkerReport report = DecodeReport(worker->process->TakeMessage());
        if (const auto* line = std::get_if<WorkerTrace>(&report)) {
            if (zetcore::debug::TraceEnabled(line->category, line->level, true))
                zetcore::debug::Trace(line->level, line->category, line->text);
            return std::nullopt;
        }
        if (std::holds_alternative<KnownModulesQuestion>(report)) {
            TellKnownModules();
            return std::nullopt;
        }
        const auto& answer = std::get<EntityAnswer>(report);
        if (answer.number != entityNumber)
            throw std::runtime_error("an answer that was not asked for");
        ScanOutcome outcome = ReadOutcome(answer, locator);
        if (!outcome.misbehaved)
            return outcome;
        failure = {
            WorkerFailure::Kind::Misbehaved, 0, outcome.phase, outcome.reason, {}, outcome.couldNotLoad};
    } catch (const std::exception& error) {
        failure.text = error.what();
    }
    worker->process->Finish();
    return failure;
}

void EntityScanner::TellKnownModules()
{
    // The answer may be long. A plug-in that has written itself into the channel must not collect many.
    if (worker->hasKnownModules)
        throw std::runtime_error("a question that has been answered");
    worker->hasKnownModules = true;
    worker->process->Send(EncodeCommand(KnownModules{findKnownModules()}));
}

WorkerFailure EntityScanner::HowItEnded()
{
    const auto phase = PhaseFromNumber(worker->process->Phase());
    const ProcessEnd end = worker->process->Finish();
    if (!end.crashed && end.code == exitChannelLost)
        return {WorkerFailure::Kind::ChannelLost, 0, phase, {}, {}};
    return {
        end.crashed ? WorkerFailure::Kind::Crashed : WorkerFailure::Kind::Exited, end.code, phase, {}, {}};
}

WorkerFailure EntityScanner::AfterChannelClosed()
{
    const auto deadline = std::chrono::steady_clock::now() + maxWaitForEnd;
    if (worker->process->WaitForEnd(deadline))
        return HowItEnded();
    worker->process->Finish();
    return {WorkerFailure::Kind::ChannelLost, 0, {}, {}, {}};
}

} // namespace zetaudiofilterscan
