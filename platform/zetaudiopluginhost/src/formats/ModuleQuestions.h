#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginModuleInfo.h>

#include "process/LoadedModule.h"
#include "scan/ScanSteps.h"

namespace zetaudiopluginhost {

using InfoList = std::vector<std::shared_ptr<zetaudiofilterhost::PluginModuleInfo>>;

/// What questioning a loaded module needs. References outlive the call.
struct ModuleQuestions
{
    const zetaudiofilterhost::PluginLocator& locator;
    const ScanOptions& options;
    LoadedModule& module;
    ScanSteps& steps;
    /// Asked for a VST2 shell only: whether it is to be left out.
    std::function<bool()> skipsShell;
};

/// Make the module's plug-ins, ask them, and close them. They throw `PluginUnusable`, `PluginMissing` and
/// `PluginThrew`.
InfoList AskVst2Module(const ModuleQuestions& questions);
InfoList AskVst3Module(const ModuleQuestions& questions);

} // namespace zetaudiopluginhost
