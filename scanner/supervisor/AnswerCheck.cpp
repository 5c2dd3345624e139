#include "AnswerCheck.h"

#include <stdexcept>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>

namespace zetaudiofilterscan {

zetaudiopluginhost::ScanOutcome ReadOutcome(const EntityAnswer& answer,
                                            const zetaudiofilterhost::PluginLocator& locator)
{
    zetaudiopluginhost::ScanOutcome outcome;
    outcome.misbehaved = answer.misbehaved;
    outcome.couldNotLoad = answer.misbehaved && answer.couldNotLoad;
    outcome.reason = answer.reason;
    outcome.phase = answer.phase;
    zetaudiofilterhost::PluginModuleInfoManager records;
    records.AddConfiguration(answer.configuration, false);
    outcome.infos = records.FindModule(locator.ModuleLocator());
    if (outcome.infos.size() != records.RecordCount())
        throw std::runtime_error("records of another module");
    return outcome;
}

} // namespace zetaudiofilterscan
