#include "testing/lookahead/SimulatedWorkers.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace zetaudiofilterscan {

using Kind = zetaudiopluginhost::PluginFailure::Kind;

SimulatedWorkers::SimulatedWorkers(const std::vector<PluginNature>& natures, const Trouble& given,
                                   std::mt19937& shared)
    : trouble(given), chance(shared)
{
    for (const PluginNature nature : natures)
        plugins.push_back({nature});
}

void SimulatedWorkers::BeginScanner(const std::vector<std::size_t>& given, std::size_t workers)
{
    list = given;
    processes.assign(2 * workers + LookAhead::mostSecondTries, {});
}

bool SimulatedWorkers::HasHolder(const Process& process) const
{
    return std::ranges::any_of(process.loaded, [this](auto entity) { return Holds(NatureAt(entity)); });
}

std::size_t SimulatedWorkers::CountProcesses() const
{
    return static_cast<std::size_t>(std::ranges::count(processes, true, &Process::exists));
}

bool SimulatedWorkers::Plugin::Begins()
{
    if (nature == PluginNature::NeverBegun)
        return false;
    return nature != PluginNature::NotBegunTwice || timesNotBegun++ >= 2;
}

void SimulatedWorkers::NoteCompany()
{
    for (Process& each : processes) {
        for (const Process& other : processes) {
            if (&each == &other || !other.exists)
                continue;
            each.sawCompany = each.sawCompany || other.entity;
            each.sawHolder =
                each.sawHolder || HasHolder(other) || (other.entity && Holds(NatureAt(*other.entity)));
        }
    }
}

void SimulatedWorkers::Carry(const LookAhead::Kill& kill)
{
    ASSERT_TRUE(processes.at(kill.worker).exists);
    processes[kill.worker] = {};
}

void SimulatedWorkers::Carry(LookAhead& ahead, const LookAhead::Start& start)
{
    Process& process = processes.at(start.worker);
    ASSERT_FALSE(process.entity) << "one at a time";
    EXPECT_EQ(start.deadline, now + entityLimit);
    if (!process.exists && CountProcesses() >= trouble.mostProcesses) {
        ++timesNotStarted;
        ahead.NotStarted(start.worker, "no room");
        return;
    }
    if (!plugins[list[start.entity]].Begins()) {
        process = {};
        ahead.NotBegun(start.worker);
        return;
    }
    process.exists = true;
    process.entity = start.entity;
    process.deadline = start.deadline;
    process.onOneProcessor = start.onOneProcessor;
    timesOnOneProcessor += start.onOneProcessor;
    process.sawCompany = process.sawHolder = false;
    NoteCompany();
    process.ends = now + std::chrono::milliseconds(1 + chance() % 20);
    if (NatureAt(start.entity) == PluginNature::Slow)
        process.ends = now + entityLimit / 3;
    if (NatureAt(start.entity) == PluginNature::Hangs)
        process.ends = Time::max();
}

void SimulatedWorkers::EndAnIdleOne(LookAhead& ahead)
{
    if (!trouble.workersEnd || chance() % 8 != 0)
        return;
    for (LookAhead::Worker worker = 0; worker < processes.size(); ++worker) {
        if (!processes[worker].exists || processes[worker].entity || chance() % 4)
            continue;
        processes[worker] = {};
        ahead.EndedIdle(worker);
        ++idleEnds;
        return;
    }
}

/// A plug-in that waits for one that another process has loaded hangs as long as that process lives.
bool SimulatedWorkers::IsStuck(const Process& process) const
{
    if (!process.entity || NatureAt(*process.entity) != PluginNature::HangsWhenHeld)
        return false;
    return std::ranges::any_of(processes, [&](const Process& other) {
        return &other != &process && other.exists && HasHolder(other);
    });
}

SimulatedWorkers::Time SimulatedWorkers::NextEnd() const
{
    Time next = Time::max();
    for (const Process& process : processes)
        if (process.entity)
            next = std::min({next, process.deadline, IsStuck(process) ? Time::max() : process.ends});
    return next;
}

bool SimulatedWorkers::IsOver(LookAhead::Worker worker) const
{
    const Process& process = processes[worker];
    return process.entity && (now >= process.deadline || (now >= process.ends && !IsStuck(process)));
}

std::vector<LookAhead::Worker> SimulatedWorkers::Ending()
{
    std::vector<LookAhead::Worker> ending;
    for (LookAhead::Worker worker = 0; worker < processes.size(); ++worker)
        if (IsOver(worker))
            ending.push_back(worker);
    std::ranges::shuffle(ending, chance);
    return ending;
}

std::optional<LookAhead::TrialFailure> SimulatedWorkers::FailureOf(const Process& process, Plugin& plugin)
{
    const auto fact = [](Kind kind, bool lostDisplay = false) {
        LookAhead::TrialFailure failure;
        failure.facts.kind = kind;
        failure.lostDisplay = lostDisplay;
        return failure;
    };
    LookAhead::TrialFailure word;
    word.isWorkersWord = true;
    switch (plugin.nature) {
    case PluginNature::Crashes:
        return fact(Kind::Crashed);
    case PluginNature::Lies:
        return fact(Kind::WrongAnswer);
    case PluginNature::TakesMemory:
        return fact(Kind::TookTooMuchMemory);
    case PluginNature::CannotBeUsed:
        return word;
    case PluginNature::CrashesInCompany:
        if (process.sawCompany)
            return fact(Kind::Crashed);
        break;
    case PluginNature::CrashesAfterOther:
        if (!process.loaded.empty())
            return fact(Kind::Crashed);
        break;
    case PluginNature::RefusesWhenHeld:
        if (process.sawHolder)
            return word;
        break;
    case PluginNature::LosesDisplayOnce:
        if (plugin.timesLost++ == 0)
            return fact(Kind::Exited, true);
        break;
    case PluginNature::NeedsDisplay:
        return fact(Kind::Exited, plugin.timesLost++ == 0);
    case PluginNature::Flaky:
        if (plugin.timesTried == 1)
            return fact(Kind::Crashed);
        break;
    case PluginNature::FailsAndPasses:
        if (plugin.timesTried % 2 == 1)
            return fact(Kind::Crashed);
        break;
    case PluginNature::NeedsTwoProcessors:
        if (process.onOneProcessor)
            return std::vector{fact(Kind::TookTooLong), word, fact(Kind::Crashed)}[*process.entity % 3];
        break;
    default:
        break;
    }
    if (now < process.deadline)
        return std::nullopt;
    return fact(Kind::TookTooLong);
}

void SimulatedWorkers::End(LookAhead& ahead, LookAhead::Worker worker)
{
    Process& process = processes[worker];
    Plugin& plugin = plugins[list[*process.entity]];
    ++plugin.timesTried;
    hangsEndured += now >= process.deadline;
    if (const auto failure = FailureOf(process, plugin)) {
        process = {};
        ahead.Failed(worker, *failure);
        return;
    }
    process.loaded.insert(*process.entity);
    process.entity.reset();
    ahead.Passed(worker, {}, true);
}

} // namespace zetaudiofilterscan
