#pragma once

#include <zetui/utility/OS_ResourceManager.h>

namespace zetaudiopluginhostui {

/// The module that this code is part of; takes no reference on it. Any thread.
zetui::utility::ModuleHandle OwnModuleHandle();

} // namespace zetaudiopluginhostui
