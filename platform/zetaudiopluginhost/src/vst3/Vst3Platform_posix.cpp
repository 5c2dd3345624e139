#include "vst3/Vst3Platform.h"

#include "formats/ScanSteps.h"
#include "vst3/Vst3Abi.h"

namespace zetaudiopluginhost::vst3 {

bool EnterModule(const LoadedModule& module)
{
    const auto enter = module.Find<ModuleEntryFunction>(moduleEntryName);
    return enter == nullptr || CallPlugin([&] { return enter(module.NativeHandle()); });
}

void LeaveModule(const LoadedModule& module)
{
    if (const auto leave = module.Find<ModuleExitFunction>(moduleExitName))
        CallPlugin(leave);
}

} // namespace zetaudiopluginhost::vst3
