#include "dialogs/ForeignWindow.h"

namespace zetui::dialogs {

// X11 and Wayland leave that to the dialog's modality hint and the window manager.
bool EnableForeignWindow(HWND, bool)
{
    return false;
}

// A transient parent is enough there.
void SetForeignOwner(HWND, HWND) {}

} // namespace zetui::dialogs
