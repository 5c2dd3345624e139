#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhost/ScanOutcome.h>

#include "WorkerMessages.h"
#include "supervisor/lookahead/LookAhead.h"
#include "supervisor/process/Interrupt.h"
#include "supervisor/workers/Worker.h"
#include "supervisor/workers/WorkerSpawner.h"

namespace zetaudiofilterscan {

class ScanLog;

/// Has worker processes try plug-ins, one at a time in each, and tells what came of every trial. Scanning
/// thread.
class Trials
{
  public:
    using Number = LookAhead::Worker;
    using Time = LookAhead::Time;

    /// How plug-ins are tried.
    struct Terms
    {
        WorkerSettings settings;
        /// A plug-in may take so long; for the words about one that took longer.
        std::chrono::milliseconds entityLimit{0};
        /// A worker that takes more memory of its own is ended. Bytes; 0 stands for no limit.
        std::uint64_t memoryLimit = 0;
        /// Is called once, before the first of these trials.
        std::function<void()> beforeFirstTrial;
        /// Is called when a worker has met a shell.
        Worker::FindKnownModules findKnownModules;
    };

    struct Passed
    {
        zetaudiopluginhost::ScanOutcome outcome;
        /// Something of the module may have stayed in the worker.
        bool wasLoaded = false;
    };
    /// The worker ended before it had begun.
    struct NotBegun
    {};
    /// There is no process for it.
    struct NotStarted
    {
        std::string reason;
    };
    /// A worker without a trial is gone.
    struct EndedIdle
    {};
    struct Event
    {
        Number worker;
        std::variant<Passed, LookAhead::TrialFailure, NotBegun, NotStarted, EndedIdle> what;
    };

    explicit Trials(std::size_t mostWorkers);
    ~Trials();
    Trials(const Trials&) = delete;
    Trials& operator=(const Trials&) = delete;

    /// Starts a process, so that it is there when it is needed. A failure is traced, and `Start` tries again.
    void StartSpare();
    /// For the trials that follow; those that are under way are ended. The log must outlive this object, or
    /// the next call, as must whatever the terms refer to.
    void Configure(Terms newTerms, ScanLog& scanLog);

    /// The worker must have no trial. The stamp of the plug-in's file is taken before it is loaded, because a
    /// file that changes meanwhile is another build.
    zetaudiofilterhost::ModuleFileStamp Start(const LookAhead::Start& start,
                                              const zetaudiofilterhost::PluginLocator& locator);
    /// Ends the worker with all of its group, and what it is at.
    void Kill(Number number);
    void KillAll();

    /// Waits until something may have happened, the interrupt is set, or `until`.
    /// `lookAround`: see `WorkerProcess::WaitForAny`.
    void Wait(const Interrupt& interrupt, Time until, std::chrono::microseconds lookAround);
    /// The next thing that has happened. To be called until the result is empty before the next wait.
    std::optional<Event> Take();

  private:
    struct Slot;

    std::unique_ptr<Worker> TakeProcess();
    std::optional<Event> TakeLater();
    std::optional<Event> TakeFrom(Number number);
    std::optional<Event> TakeMessage(Number number);
    std::optional<zetaudiopluginhost::PluginFailure> LookAtLimits(Slot& slot, Time now) const;
    std::optional<Event> TakeEnd(Number number);
    Event EndTrial(Number number, LookAhead::TrialFailure failure);

    WorkerSpawner spawner;
    Terms terms;
    ScanLog* log = nullptr;
    std::vector<std::unique_ptr<Slot>> slots;
    /// A worker that nobody has used yet, for the next slot without one.
    std::unique_ptr<Worker> spare;
    /// Trials without a process, and when they are to be told of. Those that could not be started are told of
    /// at once.
    struct Later
    {
        Event event;
        Time time;
    };
    std::vector<Later> later;
};

/// The outcome in a worker's answer. Throws `std::runtime_error` that says what is wrong with it: the answer
/// to another request, or records that are not this module's.
zetaudiopluginhost::ScanOutcome OutcomeOf(EntityAnswer answer, std::uint32_t requestNumber,
                                          const zetaudiofilterhost::PluginLocator& locator);

} // namespace zetaudiofilterscan
