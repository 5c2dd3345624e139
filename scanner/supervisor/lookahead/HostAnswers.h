#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhost/ScanOutcome.h>

namespace zetaudiofilterscan {

/// Keeps what is known of each entity until the host is told, and decides what it is told next: in the order
/// of the list, or what is finished first and the culprits last, because each of them ends the scanner. It
/// knows nothing of workers and reads no clock.
class HostAnswers
{
  public:
    using Time = std::chrono::steady_clock::time_point;
    using Duration = std::chrono::steady_clock::duration;
    using Entity = std::size_t;

    /// A plug-in that is to be banned. Stamp and time are not set.
    struct Culprit
    {
        Entity entity;
        zetaudiopluginhost::BanInfo ban = {};
    };
    /// It could not be scanned, and nobody is to blame.
    struct NotScanned
    {
        std::string reason;
    };
    using Result = std::variant<zetaudiopluginhost::ScanOutcome, NotScanned>;
    using Answer = std::variant<Result, Culprit>;

    /// The answer to the host that asks which entity is next.
    struct Announcement
    {
        enum class Kind
        {
            /// `TakeAnswer` gives the entity's answer.
            Next,
            /// The host waits for the entity, until `IsWaitOver`. It is no answer to anything.
            WaitsFor,
            NothingLeft,
        };
        Kind kind = Kind::NothingLeft;
        Entity entity = 0;
        /// How many entities have been told.
        std::size_t done = 0;
    };

    /// The host is told whom it waits for when it has waited for anything for so long.
    HostAnswers(std::size_t count, bool goesInOrder, Duration untilAnnounced);

    void Finish(Entity entity, Result result);
    void Condemn(const Culprit& culprit);

    /// `longest` is the entity that workers have been at for longest. Empty while there is nothing to say.
    std::optional<Announcement> AnnounceNext(Time now, std::optional<Entity> longest);
    /// When the host is to learn for whom it waits, if somebody is on trial then.
    std::optional<Time> TimeToTell() const;
    /// The entity of the last announcement, when that was `Next`.
    std::optional<Entity> Announced() const noexcept { return announced; }
    /// The entity of the last announcement, when that was `WaitsFor`.
    std::optional<Entity> Awaited() const noexcept { return awaited; }

    /// For the entity that was announced as the next one. Empty while nothing is known of it.
    std::optional<Answer> TakeAnswer();
    /// The host waits for the answer about that entity, so that it knows its name.
    bool IsAnswerAskedFor() const noexcept { return answerIsAskedFor; }

    bool HasFinished() const noexcept { return !finished.empty(); }
    bool OnlyCulpritsAreLeft() const noexcept { return told + culprits.size() == known.size(); }
    bool IsOver() const noexcept { return told == known.size(); }
    /// The records of all that are finished and not told. An outcome counts as one record at least.
    std::size_t Records() const noexcept { return records; }
    /// All that are not told.
    std::vector<Culprit> Culprits() const;

  private:
    struct Nothing
    {};
    struct Told
    {};
    using Known = std::variant<Nothing, Result, Culprit, Told>;

    Announcement Announce(Entity entity);

    const bool inOrder;
    const Duration announceAfter;
    std::vector<Known> known;
    std::deque<Entity> finished;
    std::deque<Entity> culprits;
    std::optional<Entity> announced;
    std::optional<Entity> awaited;
    bool answerIsAskedFor = false;
    std::optional<Time> hostWaitsSince;
    std::size_t records = 0;
    /// The first of the list that has not been told.
    Entity firstUntold = 0;
    std::size_t told = 0;
};

} // namespace zetaudiofilterscan
