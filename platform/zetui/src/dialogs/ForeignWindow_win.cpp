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

std::optional<zetcore::geom::RectT<int>> ForeignWindowPlace(HWND window)
{
    RECT place{};
    if (!IsWindow(window) || !GetWindowRect(window, &place))
        return std::nullopt;
    return zetcore::geom::RectT<int>{static_cast<int>(place.left), static_cast<int>(place.top),
                                     static_cast<int>(place.right - place.left),
                                     static_cast<int>(place.bottom - place.top)};
}

} // namespace zetui::dialogs
