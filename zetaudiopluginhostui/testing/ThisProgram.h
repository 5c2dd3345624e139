#pragma once

#include <zetui/utility/OS_ResourceManager.h>

namespace zetaudiopluginhostui {

/// The running test program, in which the module's code is linked.
zetui::utility::ModuleHandle HandleOfThisProgram();

} // namespace zetaudiopluginhostui
