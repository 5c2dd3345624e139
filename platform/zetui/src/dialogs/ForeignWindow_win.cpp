#include "dialogs/ForeignWindow.h"

#include <windows.h>

namespace zetui::dialogs {

bool EnableForeignWindow(HWND window, bool enable)
{
    if (!IsWindow(window) || (IsWindowEnabled(window) != FALSE) == enable)
        return false;
    EnableWindow(window, enable ? TRUE : FALSE);
    // While it was disabled, the system has activated some other program's window instead.
    if (enable)
        SetForegroundWindow(window);
    return true;
}

} // namespace zetui::dialogs
