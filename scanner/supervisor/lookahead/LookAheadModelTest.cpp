// A thousand random scans against a model: plug-ins of every kind, workers that finish in any order, a host
// that asks at any time, and a new scanner after each death.
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <gmock/gmock.h>

#include "supervisor/lookahead/LookAhead.h"

namespace zetaudiofilterscan {
namespace {

using namespace std::chrono_literals;
using Time = LookAhead::Time;
using Kind = zetaudiopluginhost::PluginFailure::Kind;

enum class Nature
{
    Good,
    Slow,    // a third of the limit
    Skipped, // known before anything is loaded
    Crashes,
    Hangs,
    Lies,              // its worker's answer is none
    TakesMemory,       // too much of it
    CannotBeUsed,      // its worker says so
    CrashesInCompany,  // while any other worker is at work
    CrashesAfterOther, // when its worker has loaded others
    RefusesWhenHeld,   // while another worker is at one like it, or has one loaded
    HangsWhenHeld,
    LosesDisplayOnce,
    NeedsDisplay,
    NotBegunTwice,
    NeverBegun,
    Flaky, // fails at first and passes then
    NeedsTwoProcessors,
};
constexpr int natures = static_cast<int>(Nature::NeedsTwoProcessors) + 1;

enum class Told
{
    Outcome,
    Banned,
    NotScanned,
};

constexpr auto limit = 1000ms;

/// Faults of the system, beside those of plug-ins.
struct Trouble
{
    /// Workers end while they have nothing to do.
    bool workersEnd = false;
    /// The system has room for so many processes.
    std::size_t mostProcesses = 100;
};

class World
{
  public:
    World(std::uint32_t seed, std::size_t workers, std::size_t count, bool tame, const Trouble& given)
        : trouble(given), random(seed)
    {
        settings.workers = workers;
        settings.waitsForHost = workers == 1 && random() % 2;
        settings.entityLimit = limit;
        settings.mostRecords = 1 + random() % 8;
        for (std::size_t i = 0; i < count; ++i)
            plugins.push_back({static_cast<Nature>(tame && random() % 4 ? 0 : random() % natures)});
    }

    World(std::size_t workers, const std::vector<Nature>& all, const Trouble& given = {})
        : trouble(given), random(0)
    {
        settings.workers = workers;
        settings.entityLimit = limit;
        settings.idleEndsAfter = 20ms;
        for (const Nature nature : all)
            plugins.push_back({nature});
    }

    /// Until no plug-in is left that the host knows of.
    void Run()
    {
        for (std::size_t i = 0; i < plugins.size(); ++i)
            pending.push_back(i);
        do {
            ++scanners;
            ASSERT_LE(scanners, plugins.size() + 1) << "each death must have told one";
            RunScanner();
            if (testing::Test::HasFatalFailure())
                return;
        } while (!pending.empty());
    }

    void Check() const
    {
        ASSERT_EQ(told.size(), plugins.size());
        for (const auto& [plugin, what] : told) {
            const Nature nature = plugins[plugin].nature;
            SCOPED_TRACE("plug-in " + std::to_string(plugin) + " of nature " +
                         std::to_string(static_cast<int>(nature)));
            switch (nature) {
            case Nature::Crashes:
            case Nature::Hangs:
            case Nature::Lies:
            case Nature::TakesMemory:
            case Nature::CannotBeUsed:
                EXPECT_EQ(what, Told::Banned);
                break;
            case Nature::NeedsDisplay:
            case Nature::NeverBegun:
                EXPECT_EQ(what, Told::NotScanned);
                break;
            default:
                EXPECT_EQ(what, Told::Outcome);
            }
        }
    }

    std::size_t scanners = 0;
    int hangsEndured = 0;
    int timesOnOneProcessor = 0;
    int timesNotStarted = 0;
    int idleEnds = 0;
    std::map<std::size_t, Told> told;
    Time now{};
    std::vector<std::string> notes;

  private:
    struct Plugin
    {
        Nature nature;
        int timesLost = 0;
        int timesNotBegun = 0;
        int timesTried = 0;
    };
    struct Process
    {
        bool exists = false;
        std::optional<std::size_t> entity;
        Time ends{};
        Time deadline{};
        std::set<std::size_t> loaded;
        bool sawCompany = false;
        bool sawHolder = false;
        bool onOneProcessor = false;
    };

    bool Holds(std::size_t plugin) const
    {
        return plugins[plugin].nature == Nature::RefusesWhenHeld ||
               plugins[plugin].nature == Nature::HangsWhenHeld;
    }

    std::size_t CountProcesses() const
    {
        return static_cast<std::size_t>(std::ranges::count(processes, true, &Process::exists));
    }

    void EndAnIdleOne(LookAhead& ahead)
    {
        for (std::size_t number = 0; number < processes.size(); ++number) {
            if (!processes[number].exists || processes[number].entity || random() % 4)
                continue;
            processes[number] = {};
            ahead.EndedIdle(number);
            ++idleEnds;
            return;
        }
    }

    void Look()
    {
        for (Process& each : processes) {
            for (const Process& other : processes) {
                if (&each == &other || !other.exists)
                    continue;
                each.sawCompany = each.sawCompany || other.entity;
                const auto holds = [&](std::size_t e) { return Holds(list[e]); };
                each.sawHolder = each.sawHolder || (other.entity && holds(*other.entity)) ||
                                 std::ranges::any_of(other.loaded, holds);
            }
        }
    }

    void Carry(LookAhead& ahead, const LookAhead::Action& action)
    {
        if (const auto* kill = std::get_if<LookAhead::Kill>(&action)) {
            ASSERT_TRUE(processes.at(kill->worker).exists);
            processes[kill->worker] = {};
            return;
        }
        const auto& start = std::get<LookAhead::Start>(action);
        Process& process = processes.at(start.worker);
        ASSERT_FALSE(process.entity) << "one at a time";
        ASSERT_FALSE(told.contains(list[start.entity]));
        if (settings.workers == 1) {
            ASSERT_EQ(start.entity, *current) << "not before the host knows it";
            ASSERT_TRUE(wantsAnswer || !settings.waitsForHost);
        }
        EXPECT_EQ(start.deadline, now + limit);
        Plugin& plugin = plugins[list[start.entity]];
        if (!process.exists && CountProcesses() >= trouble.mostProcesses) {
            ++timesNotStarted;
            ahead.NotStarted(start.worker, "no room");
            return;
        }
        process.exists = true;
        if (plugin.nature == Nature::NeverBegun ||
            (plugin.nature == Nature::NotBegunTwice && plugin.timesNotBegun++ < 2)) {
            process.entity = start.entity;
            process = {};
            ahead.NotBegun(start.worker);
            return;
        }
        process.entity = start.entity;
        process.deadline = start.deadline;
        process.onOneProcessor = start.onOneProcessor;
        timesOnOneProcessor += start.onOneProcessor;
        process.sawCompany = process.sawHolder = false;
        Look();
        process.ends = now + std::chrono::milliseconds(1 + random() % 20);
        if (plugin.nature == Nature::Slow)
            process.ends = now + limit / 3;
        if (plugin.nature == Nature::Hangs)
            process.ends = Time::max();
    }

    void End(LookAhead& ahead, std::size_t number)
    {
        Process& process = processes[number];
        const std::size_t entity = *process.entity;
        Plugin& plugin = plugins[list[entity]];
        ++plugin.timesTried;
        std::optional<LookAhead::TrialFailure> failure;
        const auto fail = [&](Kind kind) { failure.emplace().facts.kind = kind; };
        const auto failByWord = [&] { failure.emplace().isWorkersWord = true; };
        if (now >= process.deadline) {
            fail(Kind::TookTooLong);
            ++hangsEndured;
        }
        const bool notAlone = !process.loaded.empty();
        switch (plugin.nature) {
        case Nature::Crashes:
            fail(Kind::Crashed);
            break;
        case Nature::Lies:
            fail(Kind::WrongAnswer);
            break;
        case Nature::TakesMemory:
            fail(Kind::TookTooMuchMemory);
            break;
        case Nature::CannotBeUsed:
            failByWord();
            break;
        case Nature::CrashesInCompany:
            if (process.sawCompany)
                fail(Kind::Crashed);
            break;
        case Nature::CrashesAfterOther:
            if (notAlone)
                fail(Kind::Crashed);
            break;
        case Nature::RefusesWhenHeld:
            if (process.sawHolder)
                failByWord();
            break;
        case Nature::LosesDisplayOnce:
            if (plugin.timesLost++ == 0) {
                fail(Kind::Exited);
                failure->lostDisplay = true;
            }
            break;
        case Nature::NeedsDisplay:
            fail(Kind::Exited);
            failure->lostDisplay = plugin.timesLost++ == 0;
            break;
        case Nature::Flaky:
            if (plugin.timesTried == 1)
                fail(Kind::Crashed);
            break;
        case Nature::NeedsTwoProcessors:
            if (process.onOneProcessor && entity % 3 == 0)
                fail(Kind::TookTooLong);
            else if (process.onOneProcessor && entity % 3 == 1)
                failByWord();
            else if (process.onOneProcessor)
                fail(Kind::Crashed);
            break;
        default:
            break;
        }
        if (failure) {
            process = {};
            ahead.Failed(number, *failure);
            return;
        }
        process.entity.reset();
        process.loaded.insert(entity);
        ahead.Passed(number, {}, true);
    }

    /// A plug-in that waits for one that another process holds hangs as long as that lives.
    bool IsStuck(const Process& process) const
    {
        if (!process.entity || plugins[list[*process.entity]].nature != Nature::HangsWhenHeld)
            return false;
        return std::ranges::any_of(processes, [&](const Process& other) {
            return &other != &process && other.exists &&
                   std::ranges::any_of(other.loaded, [&](std::size_t e) { return Holds(list[e]); });
        });
    }

    bool IsOver(const Process& process) const
    {
        return process.entity && (now >= process.deadline || (now >= process.ends && !IsStuck(process)));
    }

    void Act(LookAhead& ahead)
    {
        for (int actions = 0;; ++actions) {
            ASSERT_LT(actions, 10000) << "actions without end";
            const auto action = ahead.NextAction(now);
            for (const LookAhead::Note& note : ahead.TakeNotes())
                notes.push_back(note.text);
            if (!action)
                return;
            Carry(ahead, *action);
            if (testing::Test::HasFatalFailure())
                return;
        }
    }

    void RunScanner()
    {
        list = pending;
        const std::size_t toldBefore = told.size();
        processes.assign(2 * settings.workers + 4, {});
        LookAhead ahead(settings, list.size());
        for (std::size_t i = 0; i < list.size(); ++i) {
            if (plugins[list[i]].nature == Nature::Skipped)
                ahead.SetOutcome(i, {});
            else if (const auto known = remembered.find(list[i]); known != remembered.end())
                ahead.SetCulprit({i, known->second});
        }
        wantsAnswer = false;
        current.reset();
        bool waits = false;
        bool hasAsked = false;
        Time hostActs = now;
        for (int steps = 0;; ++steps) {
            ASSERT_LT(steps, 200000) << "the scan does not end";
            Act(ahead);
            if (testing::Test::HasFatalFailure())
                return;
            if (now >= hostActs) {
                const auto acted = [&] { hostActs = now + std::chrono::milliseconds(random() % 10); };
                if (waits && ahead.IsWaitOver()) {
                    waits = false;
                    acted();
                    continue;
                }
                if (!waits && !wantsAnswer) {
                    if (const auto next = ahead.AnnounceNext(now)) {
                        ASSERT_EQ(next->done, told.size() - toldBefore);
                        using Says = LookAhead::Announcement::Kind;
                        if (next->kind == Says::NothingLeft) {
                            EXPECT_TRUE(pending.empty());
                            return;
                        }
                        waits = next->kind == Says::WaitsFor;
                        wantsAnswer = !waits;
                        current = next->entity;
                        // The host forgets what it has been told the name of.
                        if (wantsAnswer)
                            std::erase(pending, list[next->entity]);
                        acted();
                        continue;
                    }
                } else if (wantsAnswer) {
                    if (const auto answer = ahead.TakeAnswer()) {
                        if (const auto* culprit = std::get_if<LookAhead::Culprit>(&*answer)) {
                            ASSERT_EQ(culprit->entity, *current);
                            Tell(*current, Told::Banned);
                            for (const auto& left : ahead.Culprits())
                                remembered.emplace(list[left.entity], left.ban);
                            return;
                        }
                        const auto& result = std::get<LookAhead::Result>(*answer);
                        Tell(*current, std::holds_alternative<LookAhead::NotScanned>(result)
                                           ? Told::NotScanned
                                           : Told::Outcome);
                        wantsAnswer = hasAsked = false;
                        acted();
                        continue;
                    }
                    ASSERT_EQ(settings.workers, 1U) << "announced before it was decided";
                    // To have been asked may be what it waited for.
                    if (!std::exchange(hasAsked, true))
                        continue;
                }
            }
            if (trouble.workersEnd && random() % 8 == 0)
                EndAnIdleOne(ahead);
            // On to the next thing that happens.
            Time next = ahead.NextLook();
            if (hostActs > now)
                next = std::min(next, hostActs);
            for (const Process& process : processes) {
                if (process.entity)
                    next = std::min(next, IsStuck(process) ? process.deadline
                                                           : std::min(process.deadline, process.ends));
            }
            ASSERT_NE(next, Time::max()) << "nothing will ever happen";
            now = std::max(now, next);
            std::vector<std::size_t> ending;
            for (std::size_t i = 0; i < processes.size(); ++i)
                if (IsOver(processes[i]))
                    ending.push_back(i);
            std::ranges::shuffle(ending, random);
            for (const std::size_t i : ending) {
                if (IsOver(processes[i]))
                    End(ahead, i);
                Act(ahead);
                if (testing::Test::HasFatalFailure())
                    return;
            }
        }
    }

    void Tell(std::size_t entity, Told what)
    {
        ASSERT_TRUE(told.emplace(list[entity], what).second) << "told twice";
    }

    const Trouble trouble;
    std::mt19937 random;
    LookAhead::Settings settings;
    std::vector<Plugin> plugins;
    /// The host would give these to the next scanner.
    std::vector<std::size_t> pending;
    std::vector<std::size_t> list;
    std::optional<std::size_t> current;
    bool wantsAnswer = false;
    std::vector<Process> processes;
    std::map<std::size_t, zetaudiopluginhost::BanInfo> remembered;
};

/// The number of the first seed by 50.
class LookAheadModel : public testing::TestWithParam<std::uint32_t>
{};

INSTANTIATE_TEST_SUITE_P(ThousandScans, LookAheadModel, testing::Range(0U, 20U));

TEST_P(LookAheadModel, EveryPluginOfARandomScanIsToldOnceWithTheRightVerdict)
{
    constexpr std::uint32_t seeds = 50;
    int idleEnds = 0, timesNotStarted = 0;
    for (std::uint32_t seed = GetParam() * seeds; seed < (GetParam() + 1) * seeds; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const Trouble trouble{seed % 7 == 1, seed % 5 == 2 ? 1 + seed % 4 : 100};
        World world(seed, 1 + seed % 8, seed % 60, seed % 3 == 0, trouble);
        world.Run();
        world.Check();
        if (testing::Test::HasFailure())
            return;
        idleEnds += world.idleEnds;
        timesNotStarted += world.timesNotStarted;
    }
    EXPECT_GT(idleEnds, 0);
    EXPECT_GT(timesNotStarted, 0);
}

TEST(LookAheadWaits, NoPluginWaitsLongForWhatAnIdleWorkerHolds)
{
    for (const std::size_t workers : {2, 4, 8}) {
        World world(workers, std::vector(8, Nature::HangsWhenHeld));
        world.Run();
        world.Check();
        EXPECT_EQ(world.hangsEndured, 0) << workers;
        EXPECT_LT(world.now, Time(limit / 4)) << "before any second try, with " << workers;
        EXPECT_THAT(world.notes, testing::Contains(testing::HasSubstr("wait for something that it holds")));
    }
}

TEST(LookAheadWaits, TheProcessOfASecondTryEndsWithIt)
{
    LookAhead::Settings settings;
    settings.workers = 2;
    settings.entityLimit = limit;
    LookAhead ahead(settings, 2);
    const auto begin = [&](Time now) { return std::get<LookAhead::Start>(ahead.NextAction(now).value()); };
    const auto kill = [&](Time now) {
        return std::get<LookAhead::Kill>(ahead.NextAction(now).value()).worker;
    };
    const auto slow = begin(Time{});
    const auto other = begin(Time{});
    ahead.Passed(other.worker, {}, false);
    const Time later = Time{} + limit / 4;
    const auto second = begin(later);
    ASSERT_EQ(second.entity, slow.entity);
    ahead.Passed(second.worker, {}, true);
    EXPECT_THAT((std::set{kill(later), kill(later)}), testing::ElementsAre(slow.worker, second.worker));
    EXPECT_FALSE(ahead.NextAction(later));
}

TEST(LookAheadWaits, IdleWorkersStayWhileNobodyTakesLong)
{
    World world(4, std::vector(9, Nature::Good));
    world.Run();
    world.Check();
    EXPECT_THAT(world.notes, testing::IsEmpty());
}

TEST(LookAheadBlame, WhatAWorkerAtRestHoldsIsCompany)
{
    LookAhead::Settings settings;
    settings.workers = 2;
    LookAhead ahead(settings, 2);
    const auto begin = [&] { return std::get<LookAhead::Start>(ahead.NextAction(Time{}).value()); };
    const auto first = begin();
    const auto second = begin();
    ahead.Passed(second.worker, {}, true);
    ahead.NotBegun(first.worker);
    const auto again = begin();
    ASSERT_EQ(again.entity, first.entity);
    LookAhead::TrialFailure refusal;
    refusal.isWorkersWord = true;
    ahead.Failed(again.worker, refusal);
    EXPECT_EQ(ahead.Culprits().size(), 0U) << "it may have refused because of the other one";
}

TEST(LookAheadProcessors, AreSharedWithOneWorkerOnlyAndNeverBeforeAVerdict)
{
    for (const std::size_t workers : {1, 4}) {
        World world(workers, std::vector(7, Nature::NeedsTwoProcessors));
        world.Run();
        world.Check();
        EXPECT_EQ(world.timesOnOneProcessor > 0, workers == 1);
        EXPECT_EQ(world.scanners, 1U) << "nobody is banned";
    }
}

} // namespace
} // namespace zetaudiofilterscan
