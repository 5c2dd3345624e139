#include "screen/ForeignWindow.h"

#include <windows.h>

namespace zetui::ui {

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

// The toolkit makes only its own windows owners.
void SetForeignOwner(HWND window, HWND owner)
{
    if (!IsWindow(window) || (owner && !IsWindow(owner)))
        return;
    // A part of a window owns nothing.
    const HWND whole = owner ? GetAncestor(owner, GA_ROOT) : nullptr;
    SetWindowLongPtrW(window, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(whole));
}

} // namespace zetui::ui
