#include "skins/DesktopScheme.h"

#include <windows.h>

namespace zetui::skins {

std::optional<bool> SystemAsksForDark()
{
    DWORD lightTheme = 1;
    DWORD size = sizeof lightTheme;
    const LSTATUS status =
        RegGetValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
                     L"AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &lightTheme, &size);
    if (status != ERROR_SUCCESS)
        return std::nullopt;
    return lightTheme == 0;
}

} // namespace zetui::skins
