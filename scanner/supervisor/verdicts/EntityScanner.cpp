#include "supervisor/verdicts/EntityScanner.h"

#include <algorithm>
#include <exception>
#include <system_error>

#include <zetaudiofilterhost/PluginModuleInfo.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/string/Utf.h>

#include "supervisor/verdicts/EntityWorker.h"
#include "supervisor/verdicts/PluginFailed.h"

namespace zetaudiofilterscan {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiopluginhost::ScanOutcome;

namespace {

constexpr char traceCategory[] = "zetaudiofilterscan";

/// The next scan for new plug-ins tries it again.
ScanOutcome NotScanned(const PluginLocator& locator, const std::string& reason)
{
    auto info = std::make_shared<PluginModuleInfo>(locator);
    info->SetName(zetcore::filesupport::File(locator.GetPath()).GetTitle());
    info->SetStatus(ModuleStatus::Unscanned);
    info->SetReason(reason);
    ScanOutcome outcome;
    outcome.infos.push_back(std::move(info));
    return outcome;
}

/// With nothing else in the process: what the worker itself says of the plug-in, and a whole time limit, are
/// answer enough.
bool MayPassAlone(const WorkerFailure& failure)
{
    return failure.kind != WorkerFailure::Kind::TookTooLong &&
           failure.kind != WorkerFailure::Kind::Misbehaved;
}

std::string ListOfModules(const std::vector<PluginLocator>& modules)
{
    constexpr std::size_t most = 20;
    std::string text;
    const std::size_t first = modules.size() - std::min(modules.size(), most);
    if (first > 0)
        text = std::to_string(first) + " others, ";
    for (std::size_t index = first; index < modules.size(); ++index)
        text += (index > first ? ", " : "") + zetcore::string::UTF16to8(modules[index].ToString());
    return text;
}

} // namespace

EntityScanner::EntityScanner(Interrupt& wake, std::function<bool()> closed)
    : interrupt(wake), connectionClosed(std::move(closed))
{}

EntityScanner::~EntityScanner() = default;

void EntityScanner::StartAhead()
{
    try {
        worker = StartWorker();
    } catch (const std::exception& error) {
        zetcore::debug::TraceLine(1, traceCategory, error.what());
    }
}

void EntityScanner::Configure(WorkerSettings newSettings, std::chrono::milliseconds limit, ScanLog* newLog,
                              FindKnownModules newFindKnownModules)
{
    // It belongs to a list that is no more.
    if (requested.has_value())
        worker.reset();
    requested.reset();
    settings = std::move(newSettings);
    entityLimit = limit;
    log = newLog;
    findKnownModules = std::move(newFindKnownModules);
    for (Worker* started : {worker.get(), spare.get()})
        if (started)
            started->hasSettings = started->hasKnownModules = false;
}

void EntityScanner::KillWorkers()
{
    requested.reset();
    spare.reset();
    worker.reset();
}

void EntityScanner::Begin(const PluginLocator& locator)
{
    if (requested == locator)
        return;
    if (requested.has_value())
        worker.reset();
    log->BeginEntity(locator);
    // Before it is loaded: a file that changes meanwhile is another build.
    stamp = zetaudiofilterhost::GetModuleFileStamp(locator);
    try {
        EnsureWorker();
        RequestEntity(locator);
        requested = locator;
    } catch (const NoVerdict&) {
        // When it is asked for, there may be one.
        requested.reset();
    }
}

// An error reply instead would end the host's chain of requests, and its scan would wait for ever.
ScanOutcome EntityScanner::Scan(const PluginLocator& locator)
{
    try {
        return ScanInWorkers(locator);
    } catch (const NoVerdict& lack) {
        const std::string name = zetcore::string::UTF16to8(locator.ToString());
        log->Note(name + " was not scanned: " + lack.what());
        zetcore::debug::TraceLine(1, traceCategory, name + " was not scanned: " + lack.what());
        return NotScanned(locator, lack.what());
    }
}

ScanOutcome EntityScanner::ScanInWorkers(const PluginLocator& locator)
{
    Begin(locator);
    if (!requested)
        EnsureWorker(); // says why there is none
    const std::vector<PluginLocator> loadedBefore = worker->loaded;
    Verdict verdict = GetVerdict(locator);
    if (const auto* failure = std::get_if<WorkerFailure>(&verdict))
        verdict = ConfirmFailure(locator, *failure, loadedBefore);
    if (const auto* failure = std::get_if<WorkerFailure>(&verdict)) {
        const std::string reason = DescribeFailure(*failure, log->LastLine());
        log->Note(zetcore::string::UTF16to8(locator.ToString()) + " " + reason + ".");
        throw PluginFailed(locator, {reason, 0, stamp, failure->couldNotLoad});
    }
    return std::get<ScanOutcome>(std::move(verdict));
}

EntityScanner::Verdict EntityScanner::ConfirmFailure(const PluginLocator& locator, const WorkerFailure& first,
                                                     const std::vector<PluginLocator>& loadedBefore)
{
    const bool wasAlone = loadedBefore.empty();
    if (wasAlone && !MayPassAlone(first))
        return first;
    const std::string name = zetcore::string::UTF16to8(locator.ToString());
    const std::string reason = DescribeFailure(first, log->LastLine());
    log->Note(name + " " + reason +
              (wasAlone ? "" : "; loaded before it in the same process: " + ListOfModules(loadedBefore)) +
              ". It is tried once more, alone.");
    Verdict second = GetVerdictAlone(locator);
    if (std::holds_alternative<WorkerFailure>(second))
        return second;
    log->Note(name + " passed when it was alone.");

    // Another plug-in may have brought it down, or somebody the worker; and it may itself crash now and then.
    Verdict third = GetVerdictAlone(locator);
    if (const auto* failure = std::get_if<WorkerFailure>(&third)) {
        const std::string outcomes = "is flaky: it " + reason +
                                     "; tried alone, it passed; tried once more, it " +
                                     DescribeFailure(*failure, log->LastLine());
        log->Note(name + " " + outcomes + ".");
        throw PluginFailed(locator, {outcomes, 0, stamp, false});
    }
    zetcore::debug::TraceLine(2, traceCategory,
                              name + " " + reason +
                                  ", but passed alone; loaded before it: " + ListOfModules(loadedBefore));
    return third;
}

EntityScanner::Verdict EntityScanner::GetVerdictAlone(const PluginLocator& locator)
{
    log->BeginEntity(locator);
    if (worker && !worker->loaded.empty())
        worker.reset();
    return GetVerdict(locator);
}

std::unique_ptr<EntityScanner::Worker> EntityScanner::StartWorker()
{
    if (const std::error_code error = zetcore::debug::FaultError("supervisor.worker"))
        throw std::system_error(error, "the worker process could not be started");
    auto started = std::make_unique<Worker>();
    started->process = std::make_unique<WorkerProcess>([this](std::string_view bytes) {
        if (log)
            log->Output(bytes);
    });
    return started;
}

// A worker may have ended between two entities, through what a plug-in left running in it.
void EntityScanner::EnsureWorker()
{
    if (worker && worker->process->HasEnded()) {
        log->Note("The worker process ended between two plug-ins; loaded in it: " +
                  ListOfModules(worker->loaded));
        worker.reset();
    }
    if (!worker)
        worker = std::move(spare);
    if (!worker) {
        try {
            worker = StartWorker();
        } catch (const std::exception& error) {
            throw NoVerdict(error.what());
        }
    }
    if (!worker->hasSettings) {
        worker->process->Send(EncodeCommand(settings));
        worker->hasSettings = true;
    }
}

void EntityScanner::StartSpare()
{
    if (spare || worker->loaded.empty())
        return;
    try {
        spare = StartWorker();
    } catch (const std::exception& error) {
        zetcore::debug::TraceLine(1, traceCategory, error.what());
    }
}

void EntityScanner::RequestEntity(const PluginLocator& locator)
{
    worker->process->Send(EncodeCommand(EntityRequest{++entityNumber, locator}));
}

} // namespace zetaudiofilterscan
