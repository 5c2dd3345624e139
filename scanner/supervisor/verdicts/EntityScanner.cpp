#include "supervisor/verdicts/EntityScanner.h"

#include <utility>

#include <zetaudiofilterhost/PluginModuleInfo.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/File.h>

#include "supervisor/log/ScanLog.h"

namespace zetaudiofilterscan {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiopluginhost::ScanOutcome;

namespace {

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

} // namespace

EntityScanner::EntityScanner(Interrupt& wake, std::function<bool()> isConnectionClosed)
    : interrupt(wake), connectionClosed(std::move(isConnectionClosed))
{}

void EntityScanner::StartAhead()
{
    workers.StartAhead();
}

void EntityScanner::Configure(WorkerSettings settings, std::chrono::milliseconds entityLimit,
                              ScanLog* scanLog, Worker::FindKnownModules findKnownModules)
{
    // A trial that has begun belongs to a list that is no more.
    begun.reset();
    workers.Configure(std::move(settings));
    listener.emplace(interrupt, connectionClosed, entityLimit, std::move(findKnownModules));
    log = scanLog;
}

void EntityScanner::KillWorkers()
{
    begun.reset();
    workers.Kill();
}

std::unique_ptr<EntityTrial> EntityScanner::TrialOf(const PluginLocator& locator)
{
    std::unique_ptr<EntityTrial> trial = std::move(begun);
    if (!trial || trial->Locator() != locator) {
        trial.reset();
        trial = std::make_unique<EntityTrial>(locator, workers, *log, *listener);
    }
    return trial;
}

void EntityScanner::Begin(const PluginLocator& locator)
{
    try {
        begun = TrialOf(locator);
    } catch (const NoVerdict&) {
        // When the outcome is asked for, there may be a worker.
    }
}

// An error reply instead would end the host's chain of requests, and its scan would wait for ever.
ScanOutcome EntityScanner::Scan(const PluginLocator& locator)
{
    try {
        return TrialOf(locator)->Finish();
    } catch (const NoVerdict& lack) {
        const std::string line = NameForLog(locator) + " was not scanned: " + lack.what();
        log->Note(line);
        zetcore::debug::TraceLine(1, "zetaudiofilterscan", line);
        return NotScanned(locator, lack.what());
    }
}

} // namespace zetaudiofilterscan
