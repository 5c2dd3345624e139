#pragma once

#include <zetaudiopluginhostui/Export.h>

namespace zetaudiopluginhostui {

/// Before anything else of the module, on the main thread. Idempotent; always true.
ZETAUDIOPLUGINHOSTUI_API bool Initialize();
/// Before the module is unloaded, on the main thread. `Initialize` may be called again afterwards.
ZETAUDIOPLUGINHOSTUI_API void Terminate();

} // namespace zetaudiopluginhostui
