#pragma once

#include "process/LoadedModule.h"

namespace zetaudiopluginhost::vst3 {

/// The module's own start and end, whose names differ between platforms. A module without them is taken as it
/// is. They throw `PluginThrew`; `EnterModule` gives false when the module refuses.
bool EnterModule(const LoadedModule& module);
void LeaveModule(const LoadedModule& module);

} // namespace zetaudiopluginhost::vst3
