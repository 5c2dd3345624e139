#include "supervisor/lookahead/AheadScanner.h"

#include <algorithm>
#include <map>
#include <memory>
#include <utility>
#include <variant>

#include <zetaudiofilterhost/PluginModuleInfo.h>
#include <zetaudiopluginhost/ScanRules.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetscanprotocol/ScanProtocol.h>

#include "TraceCategory.h"
#include "supervisor/log/ScanLog.h"
#include "supervisor/lookahead/ReadAhead.h"
#include "supervisor/verdicts/PluginFailed.h"

namespace zetaudiofilterscan {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiopluginhost::BanReason;
using zetaudiopluginhost::ScanOutcome;
using zetcore::debug::FaultPoint;

namespace {

static_assert(zetscanprotocol::mostWorkers + LookAhead::mostSecondTries <= WorkerProcess::mostAtOnce);

template<class... Handlers>
struct Overloaded : Handlers...
{
    using Handlers::operator()...;
};
template<class... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

} // namespace

AheadScanner::AheadScanner() : trials(WorkerProcess::mostAtOnce) {}

AheadScanner::~AheadScanner() = default;

void AheadScanner::StartAhead()
{
    trials.StartSpare();
}

void AheadScanner::Begin(Task newTask, ScanLog& scanLog, const CulpritMemory& culpritMemory)
{
    task = std::move(newTask);
    log = &scanLog;
    memory = &culpritMemory;
    const std::size_t count = task.locators.size();
    stamps.assign(count, {});
    std::map<PluginLocator, BanReason> remembered;
    for (BanReason& culprit : memory->Take())
        remembered.emplace(culprit.locator, std::move(culprit));
    LookAhead::Settings settings;
    if (memory->WasPredecessorKilled()) {
        // The plug-in that did it may do it again. With one worker the host has been told its name before
        // that.
        log->Note(
            "The scanner before this one was killed. From here on plug-ins are scanned one after another.");
        task.workers = 1;
        settings.waitsForHost = true;
    }
    settings.workers = std::max<std::size_t>(std::min(task.workers, count), 1);
    settings.entityLimit = task.terms.entityLimit;
    ahead.emplace(settings, count);
    nextSignOfLife = {};
    readUntil = 0;
    trials.Configure(task.terms, *log);
    for (LookAhead::Entity entity = 0; entity < count; ++entity) {
        const PluginLocator& locator = task.locators[entity];
        const auto culprit = remembered.find(locator);
        if (culprit != remembered.end()) {
            stamps[entity] = culprit->second.info.stamp;
            ahead->SetCulprit({entity, culprit->second.info});
            continue;
        }
        if (const auto prepare = std::exchange(task.beforeFirstLook, nullptr))
            prepare();
        if (auto outcome = zetaudiopluginhost::OutcomeWithoutLoading(locator))
            ahead->SetOutcome(entity, std::move(*outcome));
    }
    Act();
}

void AheadScanner::Work()
{
    if (!ahead)
        return;
    GiveSignOfLife();
    while (std::optional<Trials::Event> event = trials.Take()) {
        Tell(*event);
        Act();
    }
    Act();
}

void AheadScanner::GiveSignOfLife()
{
    const Time now = std::chrono::steady_clock::now();
    if (ahead->IsOver()) {
        nextSignOfLife = Time::max();
    } else if (now >= nextSignOfLife) {
        nextSignOfLife = now + CulpritMemory::signOfLife;
        memory->NoteAtWork();
    }
}

void AheadScanner::Tell(Trials::Event& event)
{
    const LookAhead::Worker worker = event.worker;
    std::visit(Overloaded{[&](Trials::Passed& passed) {
                              ahead->Passed(worker, std::move(passed.outcome), passed.wasLoaded);
                              FaultPoint("supervisor.passed");
                          },
                          [&](const LookAhead::TrialFailure& failure) {
                              ahead->Failed(worker, failure);
                              FaultPoint("supervisor.trial-failed");
                          },
                          [&](const Trials::NotBegun&) { ahead->NotBegun(worker); },
                          [&](const Trials::NotStarted& lack) { ahead->NotStarted(worker, lack.reason); },
                          [&](const Trials::EndedIdle&) { ahead->EndedIdle(worker); }},
               event.what);
}

void AheadScanner::Act()
{
    const Time now = std::chrono::steady_clock::now();
    while (const std::optional<LookAhead::Action> action = ahead->NextAction(now)) {
        if (const auto* start = std::get_if<LookAhead::Start>(&*action)) {
            stamps[start->entity] = trials.Start(*start, task.locators[start->entity]);
            ReadAheadOf(start->entity);
            if (start->wantsSpare)
                trials.StartSpare();
            FaultPoint("supervisor.trial-begun");
        } else {
            trials.Kill(std::get<LookAhead::Kill>(*action).worker);
            FaultPoint("supervisor.worker-recycled");
        }
    }
    WriteNotes();
}

// The disk works for the workers' next plug-ins while they are at these.
void AheadScanner::ReadAheadOf(LookAhead::Entity entity)
{
    const std::size_t distance = 2 * task.workers;
    const std::size_t end = std::min(task.locators.size(), entity + 1 + distance);
    for (readUntil = std::max(readUntil, entity + 1); readUntil < end; ++readUntil)
        ReadAhead(task.locators[readUntil]);
}

void AheadScanner::Wait(const Interrupt& interrupt, Time until)
{
    // Most plug-ins take less, as do most hosts that have had one answer and want the next. With several
    // workers there is something better to do for the processor, unless the host is about to ask.
    constexpr std::chrono::microseconds moment{200};
    const bool looksAround = ahead && (task.workers == 1 || ahead->HasOutcomes());
    if (ahead)
        until = std::min({until, ahead->NextLook(), nextSignOfLife});
    trials.Wait(interrupt, until, looksAround ? moment : std::chrono::microseconds(0));
}

std::optional<AheadScanner::Announcement> AheadScanner::AnnounceNext()
{
    const auto next = ahead->AnnounceNext(std::chrono::steady_clock::now());
    if (!next)
        return std::nullopt;
    announced = next->entity;
    Act();
    const bool isNothing = next->kind == LookAhead::Announcement::Kind::NothingLeft;
    return Announcement{next->kind, isNothing ? PluginLocator() : task.locators[announced], next->done};
}

std::optional<ScanOutcome> AheadScanner::TakeAnswer()
{
    const PluginLocator& locator = task.locators.at(announced);
    std::optional<LookAhead::Answer> answer = ahead->TakeAnswer();
    if (!answer) {
        Act();
        return std::nullopt;
    }
    if (const auto* culprit = std::get_if<LookAhead::Culprit>(&*answer))
        throw PluginFailed(locator, BanOf(*culprit));
    auto& result = std::get<LookAhead::Result>(*answer);
    if (const auto* lack = std::get_if<LookAhead::NotScanned>(&result))
        return NotScanned(lack->reason);
    auto& outcome = std::get<ScanOutcome>(result);
    zetaudiopluginhost::CompleteOutcome(locator, outcome);
    return std::move(outcome);
}

/// The next scan for new plug-ins tries it again.
ScanOutcome AheadScanner::NotScanned(const std::string& reason) const
{
    const PluginLocator& locator = task.locators[announced];
    const std::string line = NameForLog(locator) + " was not scanned: " + reason;
    log->Note(line);
    zetcore::debug::TraceLine(1, traceCategory, line);
    auto info = std::make_shared<PluginModuleInfo>(locator);
    info->SetName(zetcore::filesupport::File(locator.GetPath()).GetTitle());
    info->SetStatus(zetaudiofilterhost::ModuleStatus::Unscanned);
    info->SetReason(reason);
    ScanOutcome outcome;
    outcome.infos.push_back(std::move(info));
    return outcome;
}

zetaudiopluginhost::BanInfo AheadScanner::BanOf(const LookAhead::Culprit& culprit) const
{
    zetaudiopluginhost::BanInfo ban = culprit.ban;
    ban.stamp = stamps[culprit.entity];
    return ban;
}

void AheadScanner::KillWorkers()
{
    trials.KillAll();
}

void AheadScanner::LeaveCulprits() const
{
    std::vector<BanReason> all;
    for (const LookAhead::Culprit& culprit : ahead->Culprits())
        if (culprit.entity != announced)
            all.push_back({task.locators[culprit.entity], BanOf(culprit)});
    memory->Leave(std::move(all));
}

void AheadScanner::WriteNotes()
{
    const auto list = [this](const char* before, const std::vector<LookAhead::Entity>& entities) {
        return entities.empty() ? std::string() : before + NamesForLog(LocatorsOf(entities));
    };
    for (const LookAhead::Note& note : ahead->TakeNotes()) {
        const char* beforeLoaded =
            note.entity ? "; loaded before it in the same process: " : "; loaded in it: ";
        log->Note((note.entity ? NameOf(*note.entity) + " " : "") + note.text +
                  list(beforeLoaded, note.loaded) + list("; in other processes meanwhile: ", note.company) +
                  note.next);
    }
}

std::string AheadScanner::NameOf(LookAhead::Entity entity) const
{
    return NameForLog(task.locators[entity]);
}

std::vector<PluginLocator> AheadScanner::LocatorsOf(const std::vector<LookAhead::Entity>& entities) const
{
    std::vector<PluginLocator> locators;
    for (const LookAhead::Entity entity : entities)
        locators.push_back(task.locators[entity]);
    return locators;
}

} // namespace zetaudiofilterscan
