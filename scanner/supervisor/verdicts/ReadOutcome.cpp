#include "supervisor/verdicts/ReadOutcome.h"

#include <algorithm>
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
    outcome.infos = zetaudiofilterhost::PluginModuleInfoManager::FromConfigurationText(answer.configuration);
    const auto isOfModule = [module = locator.ModuleLocator()](const auto& info) {
        return info->GetLocator().ModuleLocator() == module;
    };
    if (!std::ranges::all_of(outcome.infos, isOfModule))
        throw std::runtime_error("records of another module");
    return outcome;
}

} // namespace zetaudiofilterscan
