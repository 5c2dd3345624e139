#pragma once

#include <zetui/utility/OS_ResourceManager.h>

namespace zetaudiopluginhostui {

/// Returns the module that this code is part of, without a reference on it. Any thread.
zetui::utility::ModuleHandle OwnModuleHandle();

} // namespace zetaudiopluginhostui
