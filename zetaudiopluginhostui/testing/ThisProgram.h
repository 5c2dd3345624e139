#pragma once

#include <zetui/utility/OS_ResourceManager.h>

namespace zetaudiopluginhostui {

/// Returns the running test program, which the module's code is linked into.
zetui::utility::ModuleHandle HandleOfThisProgram();

} // namespace zetaudiopluginhostui
