#include "supervisor/verdicts/WorkerListener.h"

#include <algorithm>
#include <exception>
#include <utility>

#include <zetaudiofilterhost/PluginModuleInfo.h>
#include <zetcore/debug/Trace.h>

#include "ExitCodes.h"

namespace zetaudiofilterscan {

using zetaudiofilterhost::PluginLocator;
using zetaudiopluginhost::ScanOutcome;

namespace {

using Kind = WorkerFailure::Kind;

// A process that ends closes its channel first. It may take so long from there to its end.
constexpr std::chrono::seconds maxWaitForEnd{1};

WorkerFailure HowItEnded(WorkerProcess& process)
{
    const auto phase = PhaseFromNumber(process.Phase());
    const ProcessEnd end = process.Finish();
    if (!end.crashed && end.code == exitChannelLost)
        return {.kind = Kind::ChannelLost, .phase = phase};
    return {.kind = end.crashed ? Kind::Crashed : Kind::Exited, .code = end.code, .phase = phase};
}

WorkerFailure AfterChannelClosed(WorkerProcess& process)
{
    if (process.WaitForEnd(std::chrono::steady_clock::now() + maxWaitForEnd))
        return HowItEnded(process);
    process.Finish();
    return {.kind = Kind::ChannelLost};
}

WorkerFailure TookTooLong(WorkerProcess& process, std::chrono::milliseconds limit)
{
    const auto phase = PhaseFromNumber(process.Phase());
    process.Finish();
    return {.kind = Kind::TookTooLong, .phase = phase, .limit = limit};
}

WorkerFailure SentNoAnswer(WorkerProcess& process, const std::exception& error)
{
    process.Finish();
    return {.kind = Kind::WrongAnswer, .text = error.what()};
}

} // namespace

WorkerListener::WorkerListener(Interrupt& wake, std::function<bool()> isConnectionClosed,
                               std::chrono::milliseconds limit, Worker::FindKnownModules find)
    : interrupt(wake), connectionClosed(std::move(isConnectionClosed)), entityLimit(limit),
      findKnownModules(std::move(find))
{}

Verdict WorkerListener::Listen(Worker& worker, const PluginLocator& locator)
{
    WorkerProcess& process = worker.Process();
    const auto deadline = std::chrono::steady_clock::now() + entityLimit;
    try {
        for (;;) {
            switch (process.Wait(interrupt, deadline)) {
            case WorkerProcess::Event::Message:
                if (std::optional<Verdict> verdict = ReadMessage(worker, locator))
                    return std::move(*verdict);
                break;
            case WorkerProcess::Event::Interrupted:
                interrupt.Reset();
                if (connectionClosed())
                    throw ConnectionClosed();
                break;
            case WorkerProcess::Event::Ended:
                return HowItEnded(process);
            case WorkerProcess::Event::ChannelClosed:
                return AfterChannelClosed(process);
            case WorkerProcess::Event::DeadlinePassed:
                return TookTooLong(process, entityLimit);
            }
        }
    } catch (const std::length_error& error) {
        return SentNoAnswer(process, error);
    }
}

std::optional<Verdict> WorkerListener::ReadMessage(Worker& worker, const PluginLocator& locator)
{
    try {
        WorkerReport report = DecodeReport(worker.Process().TakeMessage());
        if (const auto* line = std::get_if<WorkerTrace>(&report)) {
            if (zetcore::debug::TraceEnabled(line->category, line->level, true))
                zetcore::debug::Trace(line->level, line->category, line->text);
            return std::nullopt;
        }
        if (std::holds_alternative<KnownModulesQuestion>(report)) {
            worker.TellKnownModules(findKnownModules);
            return std::nullopt;
        }
        ScanOutcome outcome =
            OutcomeOf(std::get<EntityAnswer>(std::move(report)), worker.RequestNumber(), locator);
        if (!outcome.misbehaved)
            return outcome;
        worker.Process().Finish();
        return WorkerFailure{.kind = Kind::Misbehaved,
                             .phase = outcome.phase,
                             .text = outcome.reason,
                             .couldNotLoad = outcome.couldNotLoad};
    } catch (const std::exception& error) {
        return SentNoAnswer(worker.Process(), error);
    }
}

ScanOutcome OutcomeOf(EntityAnswer answer, std::uint32_t requestNumber, const PluginLocator& locator)
{
    if (answer.number != requestNumber)
        throw std::runtime_error("an answer that was not asked for");
    const auto isOfModule = [module = locator.ModuleLocator()](const auto& info) {
        return info->GetLocator().ModuleLocator() == module;
    };
    if (!std::ranges::all_of(answer.outcome.infos, isOfModule))
        throw std::runtime_error("records of another module");
    return std::move(answer.outcome);
}

} // namespace zetaudiofilterscan
