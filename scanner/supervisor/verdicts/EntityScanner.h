#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhost/ScanOutcome.h>

#include "WorkerMessages.h"
#include "supervisor/process/Interrupt.h"
#include "supervisor/verdicts/ConnectionClosed.h"
#include "supervisor/verdicts/PluginFailed.h"
#include "supervisor/verdicts/ScanLog.h"
#include "supervisor/verdicts/WorkerFailure.h"
#include "supervisor/workers/WorkerProcess.h"

namespace zetaudiofilterscan {

/// Has plug-ins scanned by workers, one at a time, and deals with what plug-ins do to them. Scanning thread.
///
/// scanned by the worker in use --answered--> done
/// worker failed --> once more, alone, in a fresh worker --failed--> `PluginFailed`
/// (not after too long a time, or what the worker itself says of it, with nothing else loaded:
/// `PluginFailed`)
/// passed alone --> a third time, alone --passed--> done
///                                      --failed--> `PluginFailed`, as flaky
///
/// While a plug-in is scanned in a worker that has loaded others, a spare worker is started, so that a
/// failure does not wait for one.
class EntityScanner
{
  public:
    using FindKnownModules = std::function<std::vector<zetaudiofilterhost::PluginLocator>()>;

    /// `connectionClosed` is asked whenever the interrupt was set.
    EntityScanner(Interrupt& interrupt, std::function<bool()> connectionClosed);
    ~EntityScanner();
    EntityScanner(const EntityScanner&) = delete;
    EntityScanner& operator=(const EntityScanner&) = delete;

    /// Starts the first worker, so that it is there when it is needed. A failure is traced, and the first
    /// entity tries again.
    void StartAhead();
    /// For the entities that follow. `findKnownModules` is called when a worker has met a shell. It and the
    /// log must outlive the scanner, or the next call.
    void Configure(WorkerSettings settings, std::chrono::milliseconds entityLimit, ScanLog* log,
                   FindKnownModules findKnownModules);

    /// Has a worker begin with the entity that `Scan` will be asked for next, so that it is loaded while the
    /// host still reads that it is next. What comes of it is told by `Scan`.
    void Begin(const zetaudiofilterhost::PluginLocator& locator);
    /// Throws `PluginFailed` and `ConnectionClosed`. When no worker can be had, or the plug-in ended with the
    /// display that it talked to, the record says so, with the status `Unscanned`.
    zetaudiopluginhost::ScanOutcome Scan(const zetaudiofilterhost::PluginLocator& locator);

    /// Kills the workers and all of their groups.
    void KillWorkers();

  private:
    struct Worker;
    using Verdict = std::variant<zetaudiopluginhost::ScanOutcome, WorkerFailure>;

    zetaudiopluginhost::ScanOutcome ScanInWorkers(const zetaudiofilterhost::PluginLocator& locator);
    std::unique_ptr<Worker> StartWorker();
    void EnsureWorker();
    void StartSpare();
    void RequestEntity(const zetaudiofilterhost::PluginLocator& locator);
    /// Finds out whether a plug-in that has failed fails alone, too. Throws `PluginFailed` for a flaky one.
    Verdict ConfirmFailure(const zetaudiofilterhost::PluginLocator& locator, const WorkerFailure& first,
                           const std::vector<zetaudiofilterhost::PluginLocator>& loadedBefore);
    /// In a worker that has loaded nothing else.
    Verdict GetVerdictAlone(const zetaudiofilterhost::PluginLocator& locator);
    /// Takes another worker when one says nothing about the plug-in.
    Verdict GetVerdict(const zetaudiofilterhost::PluginLocator& locator);
    bool EndedWithItsDisplay(const Verdict& verdict) const;
    /// The result is empty when the worker ended before it had begun.
    std::optional<Verdict> RunInWorker(const zetaudiofilterhost::PluginLocator& locator);
    Verdict WaitForAnswer(const zetaudiofilterhost::PluginLocator& locator);
    std::optional<Verdict> ReadReport(const zetaudiofilterhost::PluginLocator& locator);
    void TellKnownModules();
    WorkerFailure HowItEnded();
    WorkerFailure AfterChannelClosed();

    Interrupt& interrupt;
    std::function<bool()> connectionClosed;
    WorkerSettings settings;
    std::chrono::milliseconds entityLimit{0};
    ScanLog* log = nullptr;
    FindKnownModules findKnownModules;
    std::unique_ptr<Worker> worker;
    std::unique_ptr<Worker> spare;
    std::uint32_t entityNumber = 0;
    /// Of the module that was begun with last.
    zetaudiofilterhost::ModuleFileStamp stamp{};
    /// The worker has been asked for it, and nobody has waited for the answer yet.
    std::optional<zetaudiofilterhost::PluginLocator> requested;
};

} // namespace zetaudiofilterscan
