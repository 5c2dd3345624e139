#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <limits>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhost/PluginFailure.h>
#include <zetaudiopluginhost/ScanOutcome.h>

#include "supervisor/lookahead/AheadWorkers.h"
#include "supervisor/lookahead/HostAnswers.h"

namespace zetaudiofilterscan {

/// Decides what the workers scan next, what the host is told next, and who is to blame for a failure. It
/// starts no process and reads no clock: its caller does what `NextAction` says, tells it what came of that,
/// and hands in the time. Entities and workers are numbers; an entity's number is its place in the list.
///
/// waiting --Start--> on trial --passed--> finished --delivered--> told
/// on trial --failed--> suspect --Start alone--> on trial alone --failed--> culprit
/// on trial alone --passed--> on trial alone once more --passed--> finished
///                                                      --failed--> culprit, as flaky
/// on trial for a quarter of the limit --Start beside it--> on trial twice; the first that passes wins, and
/// it is a culprit when both took too long
///
/// A trial is alone when its worker has loaded nothing else and no other worker was at work, or had anything
/// loaded, while it lasted. Suspects are tried when nothing else is left to do, so that they delay nobody.
///
/// The host is told only of entities whose trials are over, so that its scanner dies of none that it does not
/// know to be at fault, and nothing is lost with it. Culprits are told last, because each of them ends the
/// scanner. While nothing else is there to tell, the host learns for whom it waits.
///
/// With one worker everything goes in the order of the list: a suspect is tried at once, and an entity begins
/// when the host is told its name.
class LookAhead
{
  public:
    using Time = HostAnswers::Time;
    using Duration = HostAnswers::Duration;
    using Entity = HostAnswers::Entity;
    using Worker = AheadWorkers::Worker;
    using Culprit = HostAnswers::Culprit;
    using NotScanned = HostAnswers::NotScanned;
    using Result = HostAnswers::Result;
    using Announcement = HostAnswers::Announcement;
    using Answer = HostAnswers::Answer;

    /// More processes than workers, for second tries beside the others.
    static constexpr std::size_t mostSecondTries = 4;

    struct Settings
    {
        std::size_t workers = 1;
        /// With one worker: an entity begins only when the host asks for its result, and so knows its name
        /// for sure.
        bool waitsForHost = false;
        /// From the beginning of an entity's trial.
        Duration entityLimit = std::chrono::seconds(60);
        /// The host is told who it waits for when it has waited so long for anything.
        Duration announceAfter = std::chrono::milliseconds(250);
        /// A worker that has nothing to do and has something loaded ends when another one has been at its
        /// plug-in for so long: that may wait for what the idle one holds, a lock for example.
        Duration idleEndsAfter = std::chrono::milliseconds(250);
        /// No entity is begun while so many records wait for the host. An outcome counts as one record at
        /// least.
        std::size_t mostRecords = 4096;
    };

    /// The worker begins with the entity, at a deadline of its own.
    struct Start
    {
        Worker worker;
        Entity entity;
        Time deadline;
        /// A fresh process would be needed at once if it failed.
        bool wantsSpare = false;
        /// The plug-in's threads share one processor with it. Its failure would be no verdict, because the
        /// next trial of it is without that.
        bool onOneProcessor = false;
    };
    /// The worker's process is killed, with what it is doing. The next `Start` with it is in a new process.
    struct Kill
    {
        Worker worker;
    };
    using Action = std::variant<Start, Kill>;

    struct TrialFailure
    {
        zetaudiopluginhost::PluginFailure facts;
        /// The worker lives, and says itself that the plug-in cannot be used.
        bool isWorkersWord = false;
        /// The system did not load it.
        bool couldNotLoad = false;
        /// The plug-in ended with the display that it talked to.
        bool lostDisplay = false;
    };

    LookAhead(const Settings& settings, std::size_t entities);

    /// Before the first action. The entity needs no worker.
    void SetOutcome(Entity entity, zetaudiopluginhost::ScanOutcome outcome);
    /// Before the first action. An earlier scanner of this scan has found it out.
    void SetCulprit(const Culprit& culprit);

    /// Call it until there is nothing more to do, after each event and when the time of `NextLook` has come.
    std::optional<Action> NextAction(Time now);
    /// Neither actions nor answers come of themselves before; `Time::max()` when only events bring them.
    Time NextLook() const;

    /// The result of a `Start`. After a failure the worker's process is gone.
    void Passed(Worker worker, zetaudiopluginhost::ScanOutcome outcome, bool wasLoaded);
    void Failed(Worker worker, const TrialFailure& failure);
    /// The worker ended before it had begun with the entity.
    void NotBegun(Worker worker);
    /// There is no process for it. `reason` is for people.
    void NotStarted(Worker worker, const std::string& reason);
    /// A worker ended while it had nothing to do.
    void EndedIdle(Worker worker);

    /// Empty while it is not known. Then it is to be asked again when something has happened, and at
    /// `NextLook`.
    std::optional<Announcement> AnnounceNext(Time now);
    /// After `WaitsFor`: true when there is something else to tell.
    bool IsWaitOver() const;

    /// For the entity that was announced as the next one. Empty while there is none, which is so only with
    /// one worker.
    std::optional<Answer> TakeAnswer() { return answers.TakeAnswer(); }

    /// The host can be answered at once, and so asks again and again.
    bool HasOutcomes() const noexcept { return answers.HasFinished(); }
    bool IsOver() const noexcept { return answers.IsOver(); }
    /// All that are not told yet, for the next scanner of this scan.
    std::vector<Culprit> Culprits() const { return answers.Culprits(); }

    /// A line for the log: the entity's name, `text`, who else may have to do with it, `next`.
    struct Note
    {
        /// Empty for a line about a worker at rest.
        std::optional<Entity> entity;
        std::string text;
        /// The same worker had loaded these before.
        std::vector<Entity> loaded = {};
        /// The other workers were at these meanwhile, or had loaded them.
        std::vector<Entity> company = {};
        std::string next = {};
    };
    /// How verdicts came about, since the last call. For the log.
    std::vector<Note> TakeNotes();

  private:
    enum class SecondTry
    {
        None,
        Begun,
        Impossible
    };
    struct EntityState
    {
        /// Why it is a suspect.
        zetaudiopluginhost::PluginFailure firstFailure = {};
        bool passedAlone = false;
        bool lostDisplay = false;
        SecondTry secondTry = SecondTry::None;
        int notBegun = 0;
        /// Workers that are at it now.
        int trials = 0;
    };
    using WorkerState = AheadWorkers::State;

    bool IsAtWork() const;
    bool HostKnows(Entity entity) const;
    std::optional<Action> EndWhoMust();
    void EndIdle(Time now);
    /// Empty when nobody is to be ended for another.
    std::optional<Time> TimeToEndIdle() const;
    /// Something that it holds may be what the entity waits for.
    void EndFor(WorkerState& idle, Entity entity);
    std::optional<Action> BeginSecondTry(Time now);
    std::optional<Action> BeginAlone(Time now);
    std::optional<Action> BeginWaiting(Time now);
    Start Begin(Worker worker, Entity entity, bool alone, Time now);
    Time TimeOfSecondTry(const WorkerState& slow) const;
    /// The worker is free for what comes next; the entity that it was at.
    Entity Release(Worker worker);
    void TryAgain(Entity entity, bool alone);
    void Suspect(Entity entity, const TrialFailure& trial, const WorkerState& was);
    void Condemn(const Culprit& culprit);
    void Finish(Entity entity, Result result);
    void EndTrials(Entity entity);
    bool InOrder() const { return settings.workers == 1; }

    Settings settings;
    std::vector<EntityState> entities;
    AheadWorkers workers;
    HostAnswers answers;
    /// In the order of the list, but for those that begin again.
    std::deque<Entity> waiting;
    std::deque<Entity> suspects;
    std::size_t onTrial = 0;
    std::size_t mostAtWork = std::numeric_limits<std::size_t>::max();
    std::vector<Note> notes;
};

} // namespace zetaudiofilterscan
