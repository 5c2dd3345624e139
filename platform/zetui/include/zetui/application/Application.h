#pragma once

#include <string>

#include <zetcore/geom/RectT.h>
#include <zetui/Export.h>

/// The toolkit's application object and event loop. Main thread.
namespace zetui::ui {

/// Makes the application object when the process has none, registers the toolkit's event loop as the main
/// thread's (`zetcore::threads`) when none is registered, and installs the presentation with windows. False
/// where there is no display to open windows on (the terminal presentation then stays). A host whose own
/// application object exists keeps it; the host's event loop is never ended.
ZETUI_API bool InitializeWindows();
ZETUI_API bool HaveWindows();
/// True when there is a display, without opening anything: `QT_QPA_PLATFORM`, or a window system's variables
/// where there is one.
ZETUI_API bool IsDisplayAvailable();
/// The place of a window with this content on today's screens. It stays where it is, as long as the user can
/// take hold of it there; else it comes to the nearest screen, and no larger than that. Screen coordinates.
/// Without windows: the same place.
ZETUI_API zetcore::geom::RectT<int> FindPlaceOnScreen(const zetcore::geom::RectT<int>& content);
/// A window with this content in the middle of the main screen, no larger than has room there. Without
/// windows: nothing.
ZETUI_API zetcore::geom::RectT<int> PlaceInMiddleOfScreen(int width, int height);
/// Puts the presentation and the event loop back; for tests and the end of a program.
ZETUI_API void TerminateWindows();

} // namespace zetui::ui
