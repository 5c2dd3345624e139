#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include <zetaudiofilterhost/PluginLocator.h>

#include "WorkerMessages.h"
#include "supervisor/workers/WorkerProcess.h"

namespace zetaudiofilterscan {

class EntityOutput;

/// A worker and what it has been told. Scanning thread.
class Worker
{
  public:
    using FindKnownModules = std::function<std::vector<zetaudiofilterhost::PluginLocator>()>;

    /// Starts its process. Throws `std::system_error`.
    explicit Worker(WorkerSpawner& spawner);

    /// Sends the settings, once.
    void Configure(const WorkerSettings& settings);
    /// The settings that it has and the modules that it was told of belong to a list that is no more.
    void ForgetSettings() noexcept;

    /// Asks for the outcome of a plug-in. What the worker writes from now on goes to `pluginOutput`, until
    /// `Rest`.
    void Request(const zetaudiofilterhost::PluginLocator& locator, bool onOneProcessor,
                 EntityOutput& pluginOutput);
    /// The number of the last request, which stands in the answer to it.
    std::uint32_t RequestNumber() const noexcept { return requestNumber; }
    /// True when the worker has begun with what it was asked for last.
    bool HasBegun() const noexcept { return process.Entity() == requestNumber; }
    /// Answers the worker's question; `find` may take long. Throws `std::runtime_error` when the question was
    /// answered before: a plug-in that has written itself into the channel must not collect many long lists.
    void TellKnownModules(const FindKnownModules& find);
    void Rest() noexcept { output = nullptr; }

    WorkerProcess& Process() noexcept { return process; }

  private:
    EntityOutput* output = nullptr;
    WorkerProcess process;
    bool hasSettings = false;
    bool hasKnownModules = false;
    std::uint32_t requestNumber = 0;
};

} // namespace zetaudiofilterscan
