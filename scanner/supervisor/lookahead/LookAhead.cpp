#include "supervisor/lookahead/LookAhead.h"

#include <algorithm>
#include <utility>

#include <zetaudiopluginhost/ReasonSentences.h>

namespace zetaudiofilterscan {

using zetaudiopluginhost::BanFor;
using zetaudiopluginhost::PluginFailure;
using zetaudiopluginhost::ScanOutcome;

namespace {

// A second try begins when this part of the limit has passed, so that the verdict is there soon after it.
constexpr int secondTryAfterPart = 4;
constexpr int mostWorkersThatDoNotBegin = 3;

// A worker's own word about a plug-in, and a whole time limit, are enough when nothing else was there.
bool MayPassAlone(const LookAhead::TrialFailure& trial)
{
    return trial.facts.kind != PluginFailure::Kind::TookTooLong && !trial.isWorkersWord;
}

} // namespace

LookAhead::LookAhead(const Settings& given, std::size_t count)
    : settings(given), entities(count),
      workers(given.workers, given.workers > 1 ? std::min(given.workers, mostSecondTries) : 0),
      answers(count, given.workers == 1, given.announceAfter)
{
    for (Entity entity = 0; entity < count; ++entity)
        waiting.push_back(entity);
}

void LookAhead::SetOutcome(Entity entity, ScanOutcome outcome)
{
    Finish(entity, std::move(outcome));
}

void LookAhead::SetCulprit(const Culprit& culprit)
{
    Condemn(culprit);
}

std::optional<LookAhead::Action> LookAhead::NextAction(Time now)
{
    EndIdle(now);
    if (auto action = EndWhoMust())
        return action;
    if (auto action = BeginSecondTry(now))
        return action;
    if (auto action = BeginAlone(now))
        return action;
    return BeginWaiting(now);
}

std::optional<LookAhead::Action> LookAhead::EndWhoMust()
{
    const std::optional<Worker> worker = workers.TakeWhoMustEnd();
    return worker ? std::optional<Action>(Kill{*worker}) : std::nullopt;
}

std::optional<LookAhead::Time> LookAhead::TimeToEndIdle() const
{
    if (!waiting.empty() || !workers.IsAnyIdle())
        return std::nullopt;
    std::optional<Time> earliest;
    for (const WorkerState& worker : workers)
        if (worker.entity && (!earliest || worker.begun + settings.idleEndsAfter < *earliest))
            earliest = worker.begun + settings.idleEndsAfter;
    return earliest;
}

void LookAhead::EndIdle(Time now)
{
    const std::optional<Time> due = TimeToEndIdle();
    if (!due || now < *due)
        return;
    for (WorkerState& worker : workers)
        if (worker.IsIdle())
            EndFor(worker, *workers.LongestOnTrial());
}

void LookAhead::EndFor(WorkerState& idle, Entity entity)
{
    notes.push_back({std::nullopt,
                     "A worker process that has nothing to do is ended, because a plug-in takes long and may "
                     "wait for something that it holds",
                     idle.loaded,
                     {entity},
                     "."});
    idle.mustEnd = true;
}

LookAhead::Time LookAhead::TimeOfSecondTry(const WorkerState& slow) const
{
    const bool needsOne = !InOrder() && slow.entity && !slow.alone &&
                          entities[*slow.entity].secondTry == SecondTry::None &&
                          (slow.inCompany || !slow.loaded.empty());
    return needsOne ? slow.begun + settings.entityLimit / secondTryAfterPart : Time::max();
}

std::optional<LookAhead::Action> LookAhead::BeginSecondTry(Time now)
{
    const std::optional<Worker> extra = workers.FreeExtra();
    if (!extra)
        return std::nullopt;
    const auto slow = std::ranges::find_if(
        workers, [&](const WorkerState& worker) { return TimeOfSecondTry(worker) <= now; });
    if (slow == workers.end())
        return std::nullopt;
    const Entity entity = *slow->entity;
    entities[entity].secondTry = SecondTry::Begun;
    // A lock that a process holds as long as it lives must not be held against it.
    for (WorkerState& worker : workers)
        if (worker.IsIdle())
            EndFor(worker, entity);
    return Begin(*extra, entity, false, now);
}

std::optional<LookAhead::Action> LookAhead::BeginAlone(Time now)
{
    if (suspects.empty() || IsAtWork() || (!InOrder() && !waiting.empty()))
        return std::nullopt;
    if (const std::optional<Worker> worker = workers.TakeWhoHasLoaded())
        return Kill{*worker};
    const Entity entity = suspects.front();
    suspects.pop_front();
    return Begin(0, entity, true, now);
}

std::optional<LookAhead::Action> LookAhead::BeginWaiting(Time now)
{
    if (waiting.empty() || workers.IsAnyAlone())
        return std::nullopt;
    if (InOrder() ? !HostKnows(waiting.front()) : answers.Records() >= settings.mostRecords)
        return std::nullopt;
    const std::optional<Worker> worker = workers.FreeRegular();
    if (!worker || onTrial >= mostAtWork)
        return std::nullopt;
    const Entity entity = waiting.front();
    waiting.pop_front();
    return Begin(*worker, entity, false, now);
}

bool LookAhead::HostKnows(Entity entity) const
{
    return answers.Announced() == entity && (answers.IsAnswerAskedFor() || !settings.waitsForHost);
}

LookAhead::Start LookAhead::Begin(Worker number, Entity entity, bool alone, Time now)
{
    workers.Seat(number, entity, alone, now);
    if (entities[entity].trials++ == 0)
        ++onTrial;
    // With several workers the system must be free to spread them.
    const bool afterOthers = InOrder() && !workers[number].loaded.empty();
    return {number, entity, now + settings.entityLimit, alone || afterOthers, afterOthers};
}

bool LookAhead::IsAtWork() const
{
    return onTrial > 0;
}

LookAhead::Entity LookAhead::Release(Worker number)
{
    WorkerState& worker = workers[number];
    const Entity entity = *worker.entity;
    worker.entity.reset();
    worker.alone = false;
    if (--entities[entity].trials == 0)
        --onTrial;
    return entity;
}

void LookAhead::TryAgain(Entity entity, bool alone)
{
    if (entities[entity].trials > 0)
        return; // the other trial decides
    (alone ? suspects : waiting).push_front(entity);
}

void LookAhead::EndTrials(Entity entity)
{
    for (Worker worker = 0; worker < workers.Count(); ++worker) {
        if (workers[worker].entity == entity) {
            Release(worker);
            workers[worker].mustEnd = true;
        }
    }
}

void LookAhead::Finish(Entity entity, Result result)
{
    EndTrials(entity);
    std::erase(waiting, entity);
    answers.Finish(entity, std::move(result));
}

void LookAhead::Condemn(const Culprit& culprit)
{
    EndTrials(culprit.entity);
    std::erase(waiting, culprit.entity);
    answers.Condemn(culprit);
}

void LookAhead::Suspect(Entity entity, const TrialFailure& trial, const WorkerState& was)
{
    EndTrials(entity);
    notes.push_back({entity, zetaudiopluginhost::WordFailures({trial.facts}), was.loaded, was.company,
                     ". It is tried once more, alone."});
    entities[entity].firstFailure = trial.facts;
    suspects.push_back(entity);
}

void LookAhead::Passed(Worker number, ScanOutcome outcome, bool wasLoaded)
{
    const bool alone = workers[number].alone;
    const Entity entity = Release(number);
    WorkerState& worker = workers[number];
    if (wasLoaded)
        worker.loaded.push_back(entity);
    // Plug-ins that stay in its process must not be in the way of a second try. Extra workers serve only
    // those tries.
    if (!workers.IsRegular(number))
        worker.mustEnd = true;
    else if (const auto tried = workers.EntityOfSecondTry(); tried && worker.IsIdle())
        EndFor(worker, *tried);
    EntityState& state = entities[entity];
    if (alone && !std::exchange(state.passedAlone, true)) {
        notes.push_back({entity, "passed when it was alone."});
        TryAgain(entity, true);
        return;
    }
    Finish(entity, std::move(outcome));
}

void LookAhead::Failed(Worker number, const TrialFailure& trial)
{
    const WorkerState was = workers[number];
    const Entity entity = Release(number);
    workers[number] = {};
    EntityState& state = entities[entity];
    if (state.lostDisplay) {
        Finish(entity, NotScanned{"the display that it talked to went away"});
        return;
    }
    if (trial.lostDisplay) {
        state.lostDisplay = true;
        notes.push_back({entity, "ended with the display that it talked to. It is tried once more."});
        TryAgain(entity, was.alone);
        return;
    }
    const bool tookTooLong = trial.facts.kind == PluginFailure::Kind::TookTooLong;
    if (tookTooLong && state.trials > 0)
        return; // the second try decides
    const bool wasAlone = was.loaded.empty() && !was.inCompany;
    const auto condemn = [&](const zetaudiopluginhost::BanInfo& ban) {
        notes.push_back({entity, ban.reason, {}, {}, "."});
        Condemn({entity, ban});
    };
    if (state.passedAlone)
        condemn(BanFor({state.firstFailure, trial.facts}));
    else if (was.alone || (wasAlone && !MayPassAlone(trial)) ||
             (tookTooLong && state.secondTry == SecondTry::Begun))
        condemn(BanFor({trial.facts}, {}, trial.couldNotLoad));
    else
        Suspect(entity, trial, was);
}

void LookAhead::NotBegun(Worker number)
{
    const bool alone = workers[number].alone;
    const Entity entity = Release(number);
    workers[number] = {};
    if (++entities[entity].notBegun >= mostWorkersThatDoNotBegin)
        Finish(entity,
               NotScanned{zetaudiopluginhost::reasons::InEnglish(zetaudiopluginhost::reasons::workersEnd)});
    else
        TryAgain(entity, alone);
}

void LookAhead::NotStarted(Worker number, const std::string& reason)
{
    const bool alone = workers[number].alone;
    const Entity entity = Release(number);
    workers[number] = {};
    if (!IsAtWork()) {
        Finish(entity, NotScanned{reason});
        return;
    }
    // The others go on, and no more are started than the system has room for.
    if (workers.IsRegular(number))
        mostAtWork = onTrial;
    else
        entities[entity].secondTry = SecondTry::Impossible;
    TryAgain(entity, alone);
}

void LookAhead::EndedIdle(Worker worker)
{
    notes.push_back(
        {std::nullopt, "A worker process ended between two plug-ins", workers[worker].loaded, {}, "."});
    workers[worker] = {};
}

std::optional<LookAhead::Announcement> LookAhead::AnnounceNext(Time now)
{
    return answers.AnnounceNext(now, workers.LongestOnTrial());
}

bool LookAhead::IsWaitOver() const
{
    const std::optional<Entity> awaited = answers.Awaited();
    return !awaited || entities[*awaited].trials == 0 || answers.HasFinished() ||
           answers.OnlyCulpritsAreLeft();
}

LookAhead::Time LookAhead::NextLook() const
{
    Time next = Time::max();
    if (const std::optional<Time> due = answers.TimeToTell(); due && IsAtWork())
        next = *due;
    if (const std::optional<Time> due = TimeToEndIdle())
        next = std::min(next, *due);
    if (workers.FreeExtra())
        for (const WorkerState& worker : workers)
            next = std::min(next, TimeOfSecondTry(worker));
    return next;
}

std::vector<LookAhead::Note> LookAhead::TakeNotes()
{
    return std::exchange(notes, {});
}

} // namespace zetaudiofilterscan
