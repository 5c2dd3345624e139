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

/// The things that are needed to question a loaded module. The references outlive the call.
struct ModuleQuestions
{
    const zetaudiofilterhost::PluginLocator& locator;
    const ScanOptions& options;
    LoadedModule& module;
    ScanSteps& steps;
    /// Says for a shell, and is asked for no other module, whether it is to be left out.
    std::function<bool()> skipsShell;
};

} // namespace zetaudiopluginhost
