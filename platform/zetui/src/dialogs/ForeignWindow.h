#pragma once

#include <zetui/ui/WindowVariant.h>

namespace zetui::dialogs {

/// Lets a native window take input again, or no more. False when nothing changed: it was so already, is gone,
/// or belongs to a window system without such a state.
bool EnableForeignWindow(HWND window, bool enable);

} // namespace zetui::dialogs
