#pragma once

#include <optional>

#include <zetcore/geom/RectT.h>
#include <zetui/screen/WindowVariant.h>

/// Windows of other programs, or of other toolkits in this one.
namespace zetui::ui {

/// Lets a native window take input again, or no more. False when nothing changed, because the window was so
/// already, is gone, or belongs to a window system without such a state.
bool EnableForeignWindow(HWND window, bool enable);

/// The window's place on the screens, in the window system's own units. Empty when there is no such window,
/// or when the window system does not know windows by a handle.
std::optional<zetcore::geom::RectT<int>> ForeignWindowPlace(HWND window);

/// Keeps a window of ours above a foreign one, so that both are hidden and minimised together. A null owner
/// ends this. Does nothing when one of them is gone, or when the toolkit ties the two together itself.
void SetForeignOwner(HWND window, HWND owner);

} // namespace zetui::ui
