#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <random>
#include <set>
#include <vector>

#include "supervisor/lookahead/LookAhead.h"
#include "testing/lookahead/PluginNature.h"

namespace zetaudiofilterscan {

/// Stands in for the workers' processes: it carries out what `LookAhead` decides and tells it what came of
/// it, at moments of its own clock. Plug-ins are numbers for the whole scan; an entity is one's place in the
/// list of the present scanner.
class SimulatedWorkers
{
  public:
    using Time = LookAhead::Time;

    static constexpr std::chrono::milliseconds entityLimit{1000};

    /// Faults of the system, beside those of plug-ins.
    struct Trouble
    {
        /// Workers end while they have nothing to do.
        bool workersEnd = false;
        /// The system has room for so many processes.
        std::size_t mostProcesses = 100;
    };

    /// `chance` is shared with the rest of the scan, so that one seed describes all of it.
    SimulatedWorkers(const std::vector<PluginNature>& natures, const Trouble& trouble, std::mt19937& chance);

    std::size_t Count() const noexcept { return plugins.size(); }
    PluginNature NatureOf(std::size_t plugin) const { return plugins[plugin].nature; }

    /// A new scanner begins with `list`, and no process of an earlier one is left.
    void BeginScanner(const std::vector<std::size_t>& list, std::size_t workers);
    void Carry(LookAhead& ahead, const LookAhead::Start& start);
    void Carry(const LookAhead::Kill& kill);
    /// Now and then, when there is such trouble.
    void EndAnIdleOne(LookAhead& ahead);

    /// When the first trial ends; `Time::max()` when nobody is on trial.
    Time NextEnd() const;
    /// The workers whose trials are over, in any order. One may go on when another has ended before it.
    std::vector<LookAhead::Worker> Ending();
    bool IsOver(LookAhead::Worker worker) const;
    void End(LookAhead& ahead, LookAhead::Worker worker);

    Time now{};
    int hangsEndured = 0;
    int timesOnOneProcessor = 0;
    int timesNotStarted = 0;
    int idleEnds = 0;

  private:
    struct Plugin
    {
        PluginNature nature;
        int timesLost = 0;
        int timesNotBegun = 0;
        int timesTried = 0;

        bool Begins();
    };
    struct Process
    {
        bool exists = false;
        std::optional<LookAhead::Entity> entity;
        Time ends{};
        Time deadline{};
        std::set<LookAhead::Entity> loaded;
        bool sawCompany = false;
        bool sawHolder = false;
        bool onOneProcessor = false;
    };

    PluginNature NatureAt(LookAhead::Entity entity) const { return NatureOf(list[entity]); }
    bool HasHolder(const Process& process) const;
    std::size_t CountProcesses() const;
    /// Each that is at work notes what the others have and are at.
    void NoteCompany();
    bool IsStuck(const Process& process) const;
    std::optional<LookAhead::TrialFailure> FailureOf(const Process& process, Plugin& plugin);

    const Trouble trouble;
    std::mt19937& chance;
    std::vector<Plugin> plugins;
    std::vector<std::size_t> list;
    std::vector<Process> processes;
};

} // namespace zetaudiofilterscan
