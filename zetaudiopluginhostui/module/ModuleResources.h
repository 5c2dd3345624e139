#pragma once

#include <zetui/utility/OS_ResourceManager.h>

namespace zetaudiopluginhostui {

/// Returns the module's own resources: null before `Initialize` and after `Terminate`. Main thread.
zetui::utility::OS_ResourceManager* GetModuleResources();

} // namespace zetaudiopluginhostui
