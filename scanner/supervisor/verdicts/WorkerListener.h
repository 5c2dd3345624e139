#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <stdexcept>
#include <variant>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhost/ScanOutcome.h>

#include "WorkerMessages.h"
#include "supervisor/process/Interrupt.h"
#include "supervisor/verdicts/WorkerFailure.h"
#include "supervisor/workers/Worker.h"

namespace zetaudiofilterscan {

/// The host is gone, which ends the scanner in the middle of an entity.
class ConnectionClosed : public std::runtime_error
{
  public:
    ConnectionClosed() : std::runtime_error("the connection was closed") {}
};

/// The result of scanning a plug-in in one worker.
using Verdict = std::variant<zetaudiopluginhost::ScanOutcome, WorkerFailure>;

/// Listens to a worker until it is clear what came of a plug-in, and answers what it asks meanwhile. Scanning
/// thread.
class WorkerListener
{
  public:
    /// `connectionClosed` is asked whenever the interrupt was set, `findKnownModules` when a worker has met a
    /// shell. A worker may take `entityLimit` for one plug-in.
    WorkerListener(Interrupt& wake, std::function<bool()> connectionClosed,
                   std::chrono::milliseconds entityLimit, Worker::FindKnownModules findKnownModules);

    /// After the verdict that a plug-in has failed, the worker is of no use any more. Throws
    /// `ConnectionClosed`.
    Verdict Listen(Worker& worker, const zetaudiofilterhost::PluginLocator& locator);

  private:
    /// The result is empty when the message was not the answer.
    std::optional<Verdict> ReadMessage(Worker& worker, const zetaudiofilterhost::PluginLocator& locator);

    Interrupt& interrupt;
    std::function<bool()> connectionClosed;
    std::chrono::milliseconds entityLimit;
    Worker::FindKnownModules findKnownModules;
};

/// The outcome in a worker's answer. Throws `std::runtime_error` that says what is wrong with it: the answer
/// to another request, or records that are not this module's.
zetaudiopluginhost::ScanOutcome OutcomeOf(EntityAnswer answer, std::uint32_t requestNumber,
                                          const zetaudiofilterhost::PluginLocator& locator);

} // namespace zetaudiofilterscan
