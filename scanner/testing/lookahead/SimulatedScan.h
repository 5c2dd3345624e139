#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include <zetaudiopluginhost/BannedPluginManager.h>

#include "supervisor/lookahead/LookAhead.h"
#include "testing/lookahead/PluginNature.h"
#include "testing/lookahead/SimulatedWorkers.h"

namespace zetaudiofilterscan {

/// A whole scan with a clock of its own: a host that asks now and then, its scanners, each of which dies of
/// the culprit that it tells, and their workers. It fails the test when `LookAhead` breaks a rule.
class SimulatedScan
{
  public:
    using Time = LookAhead::Time;
    using Trouble = SimulatedWorkers::Trouble;

    /// `count` plug-ins of any nature. Most of them are good in a `tame` scan.
    SimulatedScan(std::uint32_t seed, std::size_t workers, std::size_t count, bool tame,
                  const Trouble& trouble);
    SimulatedScan(std::size_t workers, const std::vector<PluginNature>& natures);

    /// Until no plug-in is left that the host knows of.
    void Run();
    /// Every plug-in was told once, with the right verdict.
    void Check() const;

    std::size_t Scanners() const noexcept { return scanners; }
    /// With the scan's length as its `now`.
    const SimulatedWorkers& Workers() const noexcept { return workers; }
    const std::vector<std::string>& Notes() const noexcept { return notes; }

  private:
    /// What the host and the present scanner have said to each other.
    struct Conversation
    {
        /// The host has the name of `current`, and waits for its verdict.
        bool wantsAnswer = false;
        bool hasAsked = false;
        /// The host has been told for whom everything waits.
        bool waits = false;
        std::optional<LookAhead::Entity> current;
        /// The host is busy until then.
        Time hostActs{};
        std::size_t toldBefore = 0;
        bool isOver = false;
    };

    void RunScanner();
    void Prepare(LookAhead& ahead) const;
    /// All actions that `LookAhead` has at this moment.
    void Act(LookAhead& ahead);
    void Carry(LookAhead& ahead, const LookAhead::Action& action);
    /// The host's turn; false when it cannot go on before something else has happened.
    bool LetHostAct(LookAhead& ahead);
    bool LetHostAskWhoIsNext(LookAhead& ahead);
    bool LetHostAskForAnswer(LookAhead& ahead);
    void RestHost();
    void GoOnInTime(LookAhead& ahead);
    void Tell(LookAhead::Entity entity, Verdict verdict);

    std::mt19937 chance;
    LookAhead::Settings settings;
    SimulatedWorkers workers;
    Conversation talk;
    /// The host would give these to the next scanner.
    std::vector<std::size_t> pending;
    /// The present scanner has got these.
    std::vector<std::size_t> list;
    std::map<std::size_t, Verdict> told;
    /// What earlier scanners have found out and not told.
    std::map<std::size_t, zetaudiopluginhost::BanInfo> remembered;
    std::vector<std::string> notes;
    std::size_t scanners = 0;
};

} // namespace zetaudiofilterscan
