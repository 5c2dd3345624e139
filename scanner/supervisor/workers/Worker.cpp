#include "supervisor/workers/Worker.h"

#include <stdexcept>

#include "supervisor/log/EntityOutput.h"

namespace zetaudiofilterscan {

Worker::Worker(WorkerSpawner& spawner)
    : process(spawner, [this](std::string_view bytes) {
          if (output)
              output->Take(bytes);
      })
{}

void Worker::Configure(const WorkerSettings& settings)
{
    if (hasSettings)
        return;
    process.Send(EncodeCommand(settings));
    hasSettings = true;
}

void Worker::ForgetSettings() noexcept
{
    hasSettings = hasKnownModules = false;
}

void Worker::Request(const zetaudiofilterhost::PluginLocator& locator, bool onOneProcessor,
                     EntityOutput& pluginOutput)
{
    output = &pluginOutput;
    process.Send(EncodeCommand(EntityRequest{++requestNumber, locator, onOneProcessor}));
}

void Worker::TellKnownModules(const FindKnownModules& find)
{
    if (hasKnownModules)
        throw std::runtime_error("a question that has been answered");
    hasKnownModules = true;
    process.Send(EncodeCommand(KnownModules{find()}));
}

} // namespace zetaudiofilterscan
