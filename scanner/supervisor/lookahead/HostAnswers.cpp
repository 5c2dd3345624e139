#include "supervisor/lookahead/HostAnswers.h"

#include <algorithm>
#include <utility>

namespace zetaudiofilterscan {

using zetaudiopluginhost::ScanOutcome;

namespace {

std::size_t CountRecords(const HostAnswers::Result& result)
{
    const auto* outcome = std::get_if<ScanOutcome>(&result);
    return outcome ? std::max<std::size_t>(outcome->infos.size(), 1) : 1;
}

} // namespace

HostAnswers::HostAnswers(std::size_t count, bool goesInOrder, Duration untilAnnounced)
    : inOrder(goesInOrder), announceAfter(untilAnnounced), known(count)
{}

void HostAnswers::Finish(Entity entity, Result result)
{
    records += CountRecords(result);
    known[entity] = std::move(result);
    finished.push_back(entity);
}

void HostAnswers::Condemn(const Culprit& culprit)
{
    known[culprit.entity] = culprit;
    culprits.push_back(culprit.entity);
}

HostAnswers::Announcement HostAnswers::Announce(Entity entity)
{
    announced = entity;
    awaited.reset();
    hostWaitsSince.reset();
    return {Announcement::Kind::Next, entity, told};
}

std::optional<HostAnswers::Announcement> HostAnswers::AnnounceNext(Time now, std::optional<Entity> longest)
{
    if (announced)
        return Announce(*announced);
    if (IsOver())
        return Announcement{Announcement::Kind::NothingLeft, 0, told};
    if (inOrder)
        return Announce(firstUntold);
    if (!finished.empty())
        return Announce(finished.front());
    if (OnlyCulpritsAreLeft())
        return Announce(culprits.front());
    if (!hostWaitsSince)
        hostWaitsSince = now;
    if (!longest || now < *hostWaitsSince + announceAfter)
        return std::nullopt;
    hostWaitsSince.reset();
    awaited = longest;
    return Announcement{Announcement::Kind::WaitsFor, *longest, told};
}

std::optional<HostAnswers::Time> HostAnswers::TimeToTell() const
{
    return hostWaitsSince ? std::optional(*hostWaitsSince + announceAfter) : std::nullopt;
}

std::optional<HostAnswers::Answer> HostAnswers::TakeAnswer()
{
    Known& its = known[announced.value()];
    answerIsAskedFor = true;
    if (const auto* culprit = std::get_if<Culprit>(&its))
        return *culprit;
    auto* result = std::get_if<Result>(&its);
    if (!result)
        return std::nullopt;
    Answer answer = std::move(*result);
    its = Told();
    records -= CountRecords(std::get<Result>(answer));
    std::erase(finished, *announced);
    announced.reset();
    answerIsAskedFor = false;
    ++told;
    while (firstUntold < known.size() && std::holds_alternative<Told>(known[firstUntold]))
        ++firstUntold;
    return answer;
}

std::vector<HostAnswers::Culprit> HostAnswers::Culprits() const
{
    std::vector<Culprit> all;
    for (const Entity entity : culprits)
        all.push_back(std::get<Culprit>(known[entity]));
    return all;
}

} // namespace zetaudiofilterscan
