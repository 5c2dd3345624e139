#include "supervisor/lookahead/Trials.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <zetaudiofilterhost/PluginModuleInfo.h>
#include <zetaudiopluginhost/ReasonSentences.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/string/OutputTail.h>

#include "ExitCodes.h"
#include "TraceCategory.h"
#include "supervisor/log/EntityOutput.h"
#include "supervisor/log/ScanLog.h"
#include "supervisor/process/SupervisorProcess.h"
#include "supervisor/verdicts/DisplayLoss.h"

namespace zetaudiofilterscan {

using zetaudiofilterhost::ModuleFileStamp;
using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiopluginhost::ScanOutcome;
using zetcore::string::TidyLine;
namespace reasons = zetaudiopluginhost::reasons;
using Clock = std::chrono::steady_clock;
using zetaudiopluginhost::PluginFailure;
using Kind = PluginFailure::Kind;

namespace {

// A process that ends closes its channel first. It may take so long from there to its end.
constexpr std::chrono::seconds maxWaitForEnd{1};
constexpr std::chrono::milliseconds memoryPause{500};
// A service manager asks one process after another to end, the host perhaps as the last one. A second try
// that began before that would be ended, too, and its plug-in would be blamed.
constexpr std::chrono::seconds maxWaitForHost{1};
constexpr std::size_t maxTextCharacters = 300;

bool WasLoaded(const ScanOutcome& outcome)
{
    return !std::ranges::all_of(outcome.infos, [](const auto& info) {
        return info->GetStatus() == ModuleStatus::NotAPlugin || info->GetStatus() == ModuleStatus::Unreadable;
    });
}

PluginFailure HowItEnded(WorkerProcess& process)
{
    const auto phase = PhaseFromNumber(process.Phase());
    const ProcessEnd end = process.Finish();
    if (!end.crashed && end.code == exitChannelLost)
        return {.kind = Kind::ChannelLost, .phase = phase};
    return {.kind = end.crashed ? Kind::Crashed : Kind::Exited, .phase = phase, .code = end.code};
}

LookAhead::TrialFailure SentNoAnswer(const std::exception& error)
{
    return {{.kind = Kind::WrongAnswer, .details = {error.what()}}};
}

void WriteTrace(const WorkerTrace& line)
{
    if (zetcore::debug::TraceEnabled(line.category, line.level, true))
        zetcore::debug::Trace(line.level, line.category, line.text);
}

} // namespace

struct Trials::Slot
{
    struct Trial
    {
        PluginLocator locator;
        EntityOutput output;
        Time deadline;
        Time nextLookAtMemory;
    };

    explicit Slot(std::unique_ptr<Worker> its) : worker(std::move(its)) {}

    /// Empty while the worker rests. The worker writes its output here.
    std::optional<Trial> trial;
    std::unique_ptr<Worker> worker;
    /// The channel is closed, and the end of the process is expected until then.
    std::optional<Time> endsUntil;
};

Trials::Trials(std::size_t mostWorkers) : slots(mostWorkers) {}

Trials::~Trials()
{
    KillAll();
}

void Trials::StartSpare()
{
    if (spare)
        return;
    try {
        spare = TakeProcess();
    } catch (const std::exception& error) {
        zetcore::debug::TraceLine(1, traceCategory, error.what());
    }
}

void Trials::Configure(Terms newTerms, ScanLog& scanLog)
{
    terms = std::move(newTerms);
    log = &scanLog;
    later.clear();
    if (spare)
        spare->ForgetSettings();
    for (std::unique_ptr<Slot>& slot : slots) {
        if (slot && slot->trial)
            slot.reset();
        else if (slot)
            slot->worker->ForgetSettings();
    }
}

std::unique_ptr<Worker> Trials::TakeProcess()
{
    if (spare)
        return std::move(spare);
    if (const std::error_code error = zetcore::debug::FaultError("supervisor.worker"))
        throw std::system_error(error, reasons::InEnglish(reasons::noWorker));
    return std::make_unique<Worker>(spawner);
}

ModuleFileStamp Trials::Start(const LookAhead::Start& start, const PluginLocator& locator)
{
    const ModuleFileStamp stamp = zetaudiofilterhost::GetModuleFileStamp(locator);
    if (const auto prepare = std::exchange(terms.beforeFirstTrial, nullptr))
        prepare();
    std::unique_ptr<Slot>& slot = slots.at(start.worker);
    try {
        if (!slot)
            slot = std::make_unique<Slot>(TakeProcess());
    } catch (const std::exception& error) {
        later.push_back({{start.worker, NotStarted{error.what()}}, Clock::now()});
        return stamp;
    }
    slot->worker->Configure(terms.settings);
    slot->trial.emplace(
        Slot::Trial{locator, EntityOutput(*log, locator), start.deadline, Clock::now() + memoryPause});
    slot->worker->Request(locator, start.onOneProcessor, slot->trial->output);
    return stamp;
}

void Trials::Kill(Number number)
{
    slots.at(number).reset();
    std::erase_if(later, [number](const Later& one) { return one.event.worker == number; });
}

// They end at the same time, and none is waited for before all are told.
void Trials::KillAll()
{
    for (const std::unique_ptr<Slot>& slot : slots)
        if (slot)
            slot->worker->Process().BeginKill();
    if (spare)
        spare->Process().BeginKill();
    for (std::unique_ptr<Slot>& slot : slots)
        slot.reset();
    spare.reset();
    spawner.End();
    later.clear();
}

void Trials::Wait(const Interrupt& interrupt, Time until, std::chrono::microseconds lookAround)
{
    for (const Later& one : later)
        until = std::min(until, one.time);
    std::vector<WorkerProcess*> processes;
    for (const std::unique_ptr<Slot>& slot : slots) {
        if (!slot)
            continue;
        processes.push_back(&slot->worker->Process());
        if (slot->endsUntil)
            until = std::min(until, *slot->endsUntil);
        else if (slot->trial)
            until = std::min({until, slot->trial->deadline, slot->trial->nextLookAtMemory});
    }
    WorkerProcess::WaitForAny(processes, interrupt, until, lookAround);
}

std::optional<Trials::Event> Trials::Take()
{
    if (std::optional<Event> event = TakeLater())
        return event;
    for (Number number = 0; number < slots.size(); ++number)
        if (slots[number])
            if (std::optional<Event> event = TakeFrom(number))
                return event;
    return std::nullopt;
}

// The last one comes first: each plug-in that begins again goes to the front of those that wait, so that they
// are in the order of the list afterwards.
std::optional<Trials::Event> Trials::TakeLater()
{
    const auto due = std::find_if(later.rbegin(), later.rend(),
                                  [now = Clock::now()](const Later& one) { return one.time <= now; });
    if (due == later.rend())
        return std::nullopt;
    Event event = std::move(due->event);
    later.erase(std::next(due).base());
    return event;
}

std::optional<Trials::Event> Trials::TakeFrom(Number number)
{
    Slot& slot = *slots[number];
    WorkerProcess& process = slot.worker->Process();
    const Time now = Clock::now();
    try {
        // An answer that came in time counts, also when the supervisor has been busy with another worker.
        if (slot.trial && now >= slot.trial->deadline)
            process.ReadNow();
        while (const std::optional<WorkerProcess::Event> event = process.TakeEvent()) {
            if (*event == WorkerProcess::Event::Ended)
                return TakeEnd(number);
            if (*event == WorkerProcess::Event::ChannelClosed) {
                if (!slot.endsUntil)
                    slot.endsUntil = now + maxWaitForEnd;
                break;
            }
            if (std::optional<Event> answer = TakeMessage(number))
                return answer;
        }
    } catch (const std::length_error& error) {
        return EndTrial(number, SentNoAnswer(error));
    }
    if (slot.endsUntil && now >= *slot.endsUntil)
        return EndTrial(number, {{.kind = Kind::ChannelLost}});
    if (std::optional<PluginFailure> failure = LookAtLimits(slot, now))
        return EndTrial(number, {std::move(*failure)});
    return std::nullopt;
}

std::optional<PluginFailure> Trials::LookAtLimits(Slot& slot, Time now) const
{
    if (!slot.trial)
        return std::nullopt;
    const WorkerProcess& process = slot.worker->Process();
    const auto phase = PhaseFromNumber(process.Phase());
    if (now >= slot.trial->deadline)
        return PluginFailure{.kind = Kind::TookTooLong, .phase = phase, .limit = terms.entityLimit};
    if (now < slot.trial->nextLookAtMemory)
        return std::nullopt;
    slot.trial->nextLookAtMemory = now + memoryPause;
    if (terms.memoryLimit == 0 || process.MemoryInUse() <= terms.memoryLimit)
        return std::nullopt;
    constexpr std::uint64_t bytesOfMegabyte = 1 << 20;
    return PluginFailure{.kind = Kind::TookTooMuchMemory,
                         .phase = phase,
                         .details = {std::to_string(terms.memoryLimit / bytesOfMegabyte)}};
}

// The result is empty when the message was not the answer.
std::optional<Trials::Event> Trials::TakeMessage(Number number)
{
    Slot& slot = *slots[number];
    LookAhead::TrialFailure failure;
    try {
        WorkerReport report = DecodeReport(slot.worker->Process().TakeMessage());
        if (const auto* line = std::get_if<WorkerTrace>(&report)) {
            WriteTrace(*line);
            return std::nullopt;
        }
        if (std::holds_alternative<KnownModulesQuestion>(report)) {
            slot.worker->TellKnownModules(terms.findKnownModules);
            return std::nullopt;
        }
        if (!slot.trial)
            throw std::runtime_error("an answer that was not asked for");
        ScanOutcome outcome = OutcomeOf(std::get<EntityAnswer>(std::move(report)),
                                        slot.worker->RequestNumber(), slot.trial->locator);
        if (!outcome.misbehaved) {
            slot.worker->Rest();
            slot.trial.reset();
            const bool wasLoaded = WasLoaded(outcome);
            return Event{number, Passed{std::move(outcome), wasLoaded}};
        }
        failure = {outcome.failure, true, outcome.couldNotLoad};
    } catch (const std::exception& error) {
        failure = SentNoAnswer(error);
    }
    return EndTrial(number, std::move(failure));
}

// The process has ended by itself. The result is empty when that is told of later.
std::optional<Trials::Event> Trials::TakeEnd(Number number)
{
    Slot& slot = *slots[number];
    const std::string name = slot.trial ? NameForLog(slot.trial->locator) : std::string();
    const PluginFailure failure = HowItEnded(slot.worker->Process());
    Event event = EndTrial(number, {failure});
    const bool wasAsked = failure.kind == Kind::Crashed && AsksToEnd(failure.code);
    if (!wasAsked || !std::holds_alternative<LookAhead::TrialFailure>(event.what))
        return event;
    log->Note(name + ": a signal has asked its process to end. Nobody is blamed yet, because the host may be "
                     "asked, too.");
    later.push_back({std::move(event), Clock::now() + maxWaitForHost});
    return std::nullopt;
}

Trials::Event Trials::EndTrial(Number number, LookAhead::TrialFailure failure)
{
    const std::unique_ptr<Slot> slot = std::move(slots[number]);
    if (!slot->trial)
        return {number, EndedIdle{}};
    if (!slot->worker->HasBegun())
        return {number, NotBegun{}};
    // The last output comes with the end.
    slot->worker->Process().Finish();
    const EntityOutput& output = slot->trial->output;
    PluginFailure& facts = failure.facts;
    for (std::string& detail : facts.details)
        detail = TidyLine(detail, maxTextCharacters);
    facts.lastOutput = TidyLine(output.LastLine(), maxTextCharacters);
    failure.lostDisplay =
        (facts.kind == Kind::Crashed || facts.kind == Kind::Exited) && TellsOfLostDisplay(output.Tail());
    return {number, std::move(failure)};
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
