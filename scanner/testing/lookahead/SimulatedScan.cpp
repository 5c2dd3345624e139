#include "testing/lookahead/SimulatedScan.h"

#include <algorithm>
#include <numeric>
#include <utility>
#include <variant>

#include <gtest/gtest.h>

namespace zetaudiofilterscan {
namespace {

using namespace std::chrono_literals;

LookAhead::Settings SettingsFor(std::size_t workers)
{
    LookAhead::Settings settings;
    settings.workers = workers;
    settings.entityLimit = SimulatedWorkers::entityLimit;
    settings.idleEndsAfter = 20ms;
    return settings;
}

std::vector<PluginNature> AnyNatures(std::size_t count, bool tame, std::mt19937& chance)
{
    std::vector<PluginNature> natures;
    for (std::size_t i = 0; i < count; ++i)
        natures.push_back(tame && chance() % 4 ? PluginNature::Good
                                               : static_cast<PluginNature>(chance() % pluginNatures));
    return natures;
}

} // namespace

SimulatedScan::SimulatedScan(std::uint32_t seed, std::size_t workersAtOnce, std::size_t count, bool tame,
                             const Trouble& trouble)
    : chance(seed), settings(SettingsFor(workersAtOnce)),
      workers(AnyNatures(count, tame, chance), trouble, chance)
{
    settings.idleEndsAfter = LookAhead::Settings{}.idleEndsAfter;
    settings.waitsForHost = workersAtOnce == 1 && chance() % 2;
    settings.mostRecords = 1 + chance() % 8;
}

SimulatedScan::SimulatedScan(std::size_t workersAtOnce, const std::vector<PluginNature>& natures)
    : chance(0), settings(SettingsFor(workersAtOnce)), workers(natures, {}, chance)
{}

void SimulatedScan::Run()
{
    pending.resize(workers.Count());
    std::iota(pending.begin(), pending.end(), std::size_t{0});
    do {
        ++scanners;
        ASSERT_LE(scanners, workers.Count() + 1) << "each death must have told one";
        RunScanner();
        if (testing::Test::HasFatalFailure())
            return;
    } while (!pending.empty());
}

void SimulatedScan::Check() const
{
    ASSERT_EQ(told.size(), workers.Count());
    for (const auto& [plugin, verdict] : told) {
        const PluginNature nature = workers.NatureOf(plugin);
        EXPECT_EQ(verdict, RightVerdict(nature))
            << "plug-in " << plugin << " of nature " << static_cast<int>(nature);
    }
}

void SimulatedScan::RunScanner()
{
    list = pending;
    workers.BeginScanner(list, settings.workers);
    LookAhead ahead(settings, list.size());
    Prepare(ahead);
    talk = {};
    talk.hostActs = workers.now;
    talk.toldBefore = told.size();
    for (int steps = 0; !talk.isOver; ++steps) {
        ASSERT_LT(steps, 200000) << "the scan does not end";
        Act(ahead);
        if (testing::Test::HasFatalFailure())
            return;
        if (workers.now >= talk.hostActs && LetHostAct(ahead))
            continue;
        workers.EndAnIdleOne(ahead);
        GoOnInTime(ahead);
        if (testing::Test::HasFatalFailure())
            return;
    }
}

void SimulatedScan::Prepare(LookAhead& ahead) const
{
    for (LookAhead::Entity i = 0; i < list.size(); ++i) {
        if (workers.NatureOf(list[i]) == PluginNature::Skipped)
            ahead.SetOutcome(i, {});
        else if (const auto known = remembered.find(list[i]); known != remembered.end())
            ahead.SetCulprit({i, known->second});
    }
}

void SimulatedScan::Act(LookAhead& ahead)
{
    for (int actions = 0;; ++actions) {
        ASSERT_LT(actions, 10000) << "actions without end";
        const auto action = ahead.NextAction(workers.now);
        for (const LookAhead::Note& note : ahead.TakeNotes())
            notes.push_back(note.text);
        if (!action)
            return;
        Carry(ahead, *action);
        if (testing::Test::HasFatalFailure())
            return;
    }
}

void SimulatedScan::Carry(LookAhead& ahead, const LookAhead::Action& action)
{
    if (const auto* kill = std::get_if<LookAhead::Kill>(&action)) {
        workers.Carry(*kill);
        return;
    }
    const auto& start = std::get<LookAhead::Start>(action);
    ASSERT_FALSE(told.contains(list[start.entity]));
    if (settings.workers == 1) {
        ASSERT_EQ(start.entity, talk.current) << "not before the host knows it";
        ASSERT_TRUE(talk.wantsAnswer || !settings.waitsForHost);
    }
    workers.Carry(ahead, start);
}

bool SimulatedScan::LetHostAct(LookAhead& ahead)
{
    if (talk.waits) {
        if (!ahead.IsWaitOver())
            return false;
        talk.waits = false;
        RestHost();
        return true;
    }
    return talk.wantsAnswer ? LetHostAskForAnswer(ahead) : LetHostAskWhoIsNext(ahead);
}

bool SimulatedScan::LetHostAskWhoIsNext(LookAhead& ahead)
{
    const auto next = ahead.AnnounceNext(workers.now);
    if (!next)
        return false;
    EXPECT_EQ(next->done, told.size() - talk.toldBefore);
    using Says = LookAhead::Announcement::Kind;
    if (next->kind == Says::NothingLeft) {
        EXPECT_TRUE(pending.empty());
        talk.isOver = true;
        return true;
    }
    talk.waits = next->kind == Says::WaitsFor;
    talk.wantsAnswer = !talk.waits;
    talk.current = next->entity;
    // The host forgets what it has been told the name of.
    if (talk.wantsAnswer)
        std::erase(pending, list[next->entity]);
    RestHost();
    return true;
}

bool SimulatedScan::LetHostAskForAnswer(LookAhead& ahead)
{
    const auto answer = ahead.TakeAnswer();
    if (!answer) {
        EXPECT_EQ(settings.workers, 1U) << "announced before it was decided";
        // To have been asked may be what it waited for.
        return !std::exchange(talk.hasAsked, true);
    }
    if (const auto* culprit = std::get_if<LookAhead::Culprit>(&*answer)) {
        EXPECT_EQ(culprit->entity, talk.current);
        Tell(culprit->entity, Verdict::Banned);
        for (const auto& left : ahead.Culprits())
            remembered.emplace(list[left.entity], left.ban);
        talk.isOver = true;
        return true;
    }
    const auto& result = std::get<LookAhead::Result>(*answer);
    Tell(*talk.current,
         std::holds_alternative<LookAhead::NotScanned>(result) ? Verdict::NotScanned : Verdict::Outcome);
    talk.wantsAnswer = talk.hasAsked = false;
    RestHost();
    return true;
}

void SimulatedScan::RestHost()
{
    talk.hostActs = workers.now + std::chrono::milliseconds(chance() % 10);
}

/// To the next thing that happens.
void SimulatedScan::GoOnInTime(LookAhead& ahead)
{
    Time next = std::min(ahead.NextLook(), workers.NextEnd());
    if (talk.hostActs > workers.now)
        next = std::min(next, talk.hostActs);
    ASSERT_NE(next, Time::max()) << "nothing will ever happen";
    workers.now = std::max(workers.now, next);
    for (const LookAhead::Worker worker : workers.Ending()) {
        if (workers.IsOver(worker))
            workers.End(ahead, worker);
        Act(ahead);
        if (testing::Test::HasFatalFailure())
            return;
    }
}

void SimulatedScan::Tell(LookAhead::Entity entity, Verdict verdict)
{
    EXPECT_TRUE(told.emplace(list[entity], verdict).second) << "told twice";
}

} // namespace zetaudiofilterscan
