#pragma once

#include <zetui/utility/OS_ResourceManager.h>

namespace zetaudiopluginhostui {

/// Returns the module's own resources: null before `Initialize` and after `Terminate`. Main thread.
zetui::utility::OS_ResourceManager* GetModuleResources();
/// The same for an operation that cannot do without. Before `Initialize` it throws the null-pointer error,
/// whose message names the operation and the call that is missing.
zetui::utility::OS_ResourceManager* RequireModuleResources(const char* operation);

} // namespace zetaudiopluginhostui
