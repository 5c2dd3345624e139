#pragma once

#include <zetaudiopluginhostui/Export.h>

namespace zetaudiopluginhostui {

/// The host calls this on the main thread before it uses anything else of the module. A second call does
/// nothing. Always true.
ZETAUDIOPLUGINHOSTUI_API bool Initialize();
/// The host calls this on the main thread before it unloads the module. `Initialize` may be called again
/// afterwards.
ZETAUDIOPLUGINHOSTUI_API void Terminate();

} // namespace zetaudiopluginhostui
