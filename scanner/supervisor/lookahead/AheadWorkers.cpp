#include "supervisor/lookahead/AheadWorkers.h"

#include <algorithm>

namespace zetaudiofilterscan {

AheadWorkers::AheadWorkers(std::size_t regularOnes, std::size_t extraOnes)
    : regular(regularOnes), states(regularOnes + extraOnes)
{}

void AheadWorkers::Seat(Worker number, Entity entity, bool alone, Time now)
{
    State& worker = states[number];
    worker.exists = true;
    worker.entity = entity;
    worker.begun = now;
    worker.alone = alone;
    worker.inCompany = false;
    worker.company.clear();
    for (State& other : states) {
        if (&other == &worker || !other.exists)
            continue;
        if (other.entity) {
            other.inCompany = worker.inCompany = true;
            other.company.push_back(entity);
            worker.company.push_back(*other.entity);
        }
        if (!other.loaded.empty()) {
            worker.inCompany = true;
            worker.company.insert(worker.company.end(), other.loaded.begin(), other.loaded.end());
        }
    }
}

std::optional<AheadWorkers::Worker> AheadWorkers::FreeRegular() const
{
    for (Worker worker = 0; worker < regular; ++worker)
        if (!states[worker].entity)
            return worker;
    return std::nullopt;
}

std::optional<AheadWorkers::Worker> AheadWorkers::FreeExtra() const
{
    for (Worker extra = regular; extra < states.size(); ++extra)
        if (!states[extra].exists)
            return extra;
    return std::nullopt;
}

std::optional<AheadWorkers::Entity> AheadWorkers::EntityOfSecondTry() const
{
    for (Worker extra = regular; extra < states.size(); ++extra)
        if (states[extra].entity)
            return states[extra].entity;
    return std::nullopt;
}

std::optional<AheadWorkers::Entity> AheadWorkers::LongestOnTrial() const
{
    const State* longest = nullptr;
    for (const State& worker : states)
        if (worker.entity && (!longest || worker.begun < longest->begun))
            longest = &worker;
    return longest ? longest->entity : std::nullopt;
}

bool AheadWorkers::IsAnyIdle() const
{
    return std::ranges::any_of(states, &State::IsIdle);
}

bool AheadWorkers::IsAnyAlone() const
{
    return std::ranges::any_of(states, &State::alone);
}

std::optional<AheadWorkers::Worker> AheadWorkers::TakeWhoMustEnd()
{
    return Renew(std::ranges::find_if(
        states, [](const State& worker) { return worker.exists && worker.mustEnd && !worker.entity; }));
}

std::optional<AheadWorkers::Worker> AheadWorkers::TakeWhoHasLoaded()
{
    return Renew(std::ranges::find_if(
        states, [](const State& worker) { return worker.exists && !worker.loaded.empty(); }));
}

std::optional<AheadWorkers::Worker> AheadWorkers::Renew(std::vector<State>::iterator found)
{
    if (found == states.end())
        return std::nullopt;
    *found = {};
    return static_cast<Worker>(found - states.begin());
}

} // namespace zetaudiofilterscan
