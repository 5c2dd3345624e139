#include "dialogs/ForeignWindow.h"

#include <windows.h>

namespace zetui::dialogs {

bool EnableForeignWindow(HWND window, bool enable)
{
    if (!IsWindow(window) || (IsWindowEnabled(window) != FALSE) == enable)
        return false;
    EnableWindow(window, enable ? TRUE : FALSE);
    return true;
}

} // namespace zetui::dialogs
