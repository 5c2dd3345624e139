#include <zettesting/NoDisplay.h>

#include <stdexcept>

#include <windows.h>

#include <zettesting/Environment.h>

namespace zettesting {

/// A window station that nobody sees, like that of a service.
struct NoDisplay::State
{
    ScopedEnvironment noPlatform{"QT_QPA_PLATFORM", std::nullopt};
    HWINSTA stationBefore = ::GetProcessWindowStation();
    HDESK desktopBefore = ::GetThreadDesktop(::GetCurrentThreadId());
    HWINSTA station = ::CreateWindowStationW(nullptr, 0, WINSTA_ALL_ACCESS, nullptr);
    HDESK desktop = nullptr;

    State()
    {
        if (!station || !::SetProcessWindowStation(station))
            throw std::runtime_error("cannot make a window station");
        // Processes that are started need a desktop, too.
        desktop = ::CreateDesktopW(L"unseen", nullptr, nullptr, 0, GENERIC_ALL, nullptr);
        ::SetThreadDesktop(desktop);
    }

    ~State()
    {
        ::SetProcessWindowStation(stationBefore);
        ::SetThreadDesktop(desktopBefore);
        ::CloseDesktop(desktop);
        ::CloseWindowStation(station);
    }
};

NoDisplay::NoDisplay() : state(std::make_unique<State>()) {}

NoDisplay::~NoDisplay() = default;

} // namespace zettesting
