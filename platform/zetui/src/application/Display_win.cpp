#include "application/Display.h"

#include <string_view>

#include <windows.h>

#include <zetui/application/Application.h>

namespace zetui::ui {

namespace {

/// Services run on a window station that nobody sees.
bool IsWindowStationVisible()
{
    USEROBJECTFLAGS flags{};
    const HWINSTA station = ::GetProcessWindowStation();
    return station &&
           ::GetUserObjectInformationW(station, UOI_FLAGS, &flags, sizeof(flags), nullptr) != FALSE &&
           (flags.dwFlags & WSF_VISIBLE) != 0;
}

} // namespace

bool IsDisplayAvailable()
{
    char choice[256];
    const DWORD length = ::GetEnvironmentVariableA("QT_QPA_PLATFORM", choice, sizeof(choice));
    // "windows" is Qt's name for the system's own windows.
    const bool other =
        length > 0 && length < sizeof(choice) && !std::string_view(choice, length).starts_with("windows");
    return other || IsWindowStationVisible();
}

bool WindowSystemAnswers()
{
    return IsDisplayAvailable();
}

} // namespace zetui::ui
