#pragma once

#include <string>

#include <zetcore/geom/RectT.h>
#include <zetui/Export.h>

/// The toolkit's application object and event loop. Main thread.
namespace zetui::ui {

/// Says how the program calls itself to taskbars, window managers and screen readers. Without it, that is the
/// host's name (`zetcore::utility::GetClientName`). To be called before `InitializeWindows`; an application
/// object of the host's own keeps its name. `desktopFile` is the name of the program's desktop file, without
/// its ending, which tells desktops with Wayland the window's icon.
ZETUI_API void SetProgramName(const std::wstring& name, const std::wstring& desktopFile = {});
/// Makes the application object when the process has none, registers the toolkit's event loop as the main
/// thread's (`zetcore::threads`) when none is registered, and installs the presentation with windows. False
/// where there is no display to open windows on; the terminal presentation stays then. A host keeps an
/// application object of its own, and its event loop is never ended.
ZETUI_API bool InitializeWindows();
ZETUI_API bool HaveWindows();
/// True when there is a display, without opening anything: `QT_QPA_PLATFORM`, or a window system's variables
/// where there is one.
ZETUI_API bool IsDisplayAvailable();
/// The place on today's screens for a window with this content, in screen coordinates. The window stays where
/// it is as long as the user can take hold of it there. Otherwise it moves to the nearest screen and becomes
/// no larger than that. Without windows, the place comes back as it is.
ZETUI_API zetcore::geom::RectT<int> FindPlaceOnScreen(const zetcore::geom::RectT<int>& content);
/// The place in the middle of the main screen for a window with this content. It is no larger than there is
/// room. Without windows, the answer is an empty rectangle.
ZETUI_API zetcore::geom::RectT<int> PlaceInMiddleOfScreen(int width, int height);
/// Puts the presentation and the event loop back. Tests call it, and programs at their end.
ZETUI_API void TerminateWindows();

} // namespace zetui::ui
