#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhost/ScanOutcome.h>

#include "WorkerMessages.h"
#include "supervisor/process/Interrupt.h"
#include "supervisor/verdicts/EntityTrial.h"
#include "supervisor/verdicts/WorkerListener.h"
#include "supervisor/workers/Workers.h"

namespace zetaudiofilterscan {

class ScanLog;

/// Has plug-ins scanned by workers, each in a trial of its own. Scanning thread.
class EntityScanner
{
  public:
    /// `connectionClosed` is asked whenever the interrupt was set.
    EntityScanner(Interrupt& wake, std::function<bool()> isConnectionClosed);

    /// Starts the first worker, so that it is there when it is needed.
    void StartAhead();
    /// For the entities that follow. `findKnownModules` is called when a worker has met a shell. It and the
    /// log must outlive the scanner, or the next call.
    void Configure(WorkerSettings settings, std::chrono::milliseconds entityLimit, ScanLog* scanLog,
                   Worker::FindKnownModules findKnownModules);

    /// Has a worker begin with the entity that `Scan` will be asked for next, so that it is loaded while the
    /// host still reads that it is next. What comes of it is told by `Scan`.
    void Begin(const zetaudiofilterhost::PluginLocator& locator);
    /// Throws `PluginFailed` and `ConnectionClosed`. When no worker can be had, or the plug-in ended with the
    /// display that it talked to, the record says so, with the status `Unscanned`.
    zetaudiopluginhost::ScanOutcome Scan(const zetaudiofilterhost::PluginLocator& locator);

    /// Kills the workers and all of their groups.
    void KillWorkers();

  private:
    /// The trial that has begun with the plug-in, else a new one. Throws `NoVerdict`.
    std::unique_ptr<EntityTrial> TrialOf(const zetaudiofilterhost::PluginLocator& locator);

    Interrupt& interrupt;
    std::function<bool()> connectionClosed;
    ScanLog* log = nullptr;
    std::optional<WorkerListener> listener;
    Workers workers;
    /// Nobody has waited for its outcome yet.
    std::unique_ptr<EntityTrial> begun;
};

} // namespace zetaudiofilterscan
