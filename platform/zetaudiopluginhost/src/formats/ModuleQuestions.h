#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginModuleInfo.h>

#include "formats/ScanSteps.h"
#include "process/LoadedModule.h"

namespace zetaudiopluginhost {

using InfoList = std::vector<std::shared_ptr<zetaudiofilterhost::PluginModuleInfo>>;

/// What questioning a loaded module needs. References outlive the call.
struct ModuleQuestions
{
    const zetaudiofilterhost::PluginLocator& locator;
    const ScanOptions& options;
    LoadedModule& module;
    ScanSteps& steps;
    /// Asked for a shell only: whether it is to be left out.
    std::function<bool()> skipsShell;
};

} // namespace zetaudiopluginhost
