#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <vector>

#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhost/ScanOutcome.h>

#include "supervisor/log/EntityOutput.h"
#include "supervisor/log/ScanLog.h"
#include "supervisor/verdicts/WorkerListener.h"
#include "supervisor/workers/Workers.h"

namespace zetaudiofilterscan {

/// The scanner cannot say anything of a plug-in: the system starts no more processes to load it in, for
/// example.
class NoVerdict : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

/// A plug-in's way through the workers until it is clear whether it can be used. Scanning thread.
///
/// scanned by the worker in use --answered--> done
/// worker failed --> once more, alone, in a fresh worker --failed--> `PluginFailed`
/// (not after too long a time, or what the worker itself says of it, with nothing else loaded:
/// `PluginFailed`)
/// passed alone --> a third time, alone --passed--> done
///                                      --failed--> `PluginFailed`, as flaky
class EntityTrial
{
  public:
    /// Has a worker begin with the plug-in. The others outlive the trial. Throws `NoVerdict`.
    EntityTrial(const zetaudiofilterhost::PluginLocator& plugin, Workers& allWorkers, ScanLog& scanLog,
                WorkerListener& workerListener);
    EntityTrial(const EntityTrial&) = delete;
    EntityTrial& operator=(const EntityTrial&) = delete;

    const zetaudiofilterhost::PluginLocator& Locator() const noexcept { return locator; }
    /// Waits for the outcome. Throws `PluginFailed`, `NoVerdict` and `ConnectionClosed`. Call once.
    zetaudiopluginhost::ScanOutcome Finish();

  private:
    using TakeWorker = std::unique_ptr<Worker> (Workers::*)(ScanLog&);

    void Request(TakeWorker take);
    /// Finds out whether a plug-in that has failed fails alone, too. Throws `PluginFailed` for a flaky one.
    Verdict ConfirmFailure(const WorkerFailure& first,
                           const std::vector<zetaudiofilterhost::PluginLocator>& loadedBefore);
    /// In a worker that has loaded nothing else.
    Verdict GetVerdictAlone();
    /// Takes another worker when one says nothing about the plug-in.
    Verdict GetVerdict();
    bool EndedWithItsDisplay(const Verdict& verdict) const;
    /// The result is empty when the worker ended before it had begun.
    std::optional<Verdict> RunInWorker();

    const zetaudiofilterhost::PluginLocator locator;
    Workers& workers;
    ScanLog& log;
    WorkerListener& listener;
    EntityOutput output;
    /// Taken before the module is loaded: a file that changes meanwhile is another build.
    const zetaudiofilterhost::ModuleFileStamp stamp;
    /// The worker that was asked for the plug-in, until its answer has been waited for.
    std::unique_ptr<Worker> worker;
};

} // namespace zetaudiofilterscan
