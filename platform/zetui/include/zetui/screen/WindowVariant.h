#pragma once

/// The native window handle of the host's window system: Windows' own type there; elsewhere the window's
/// number (an X11 window id, for example) in the same kind of pointer.
struct HWND__;
using HWND = HWND__*;

namespace zetui::ui {

/// A window to show something on: a native one, or none.
///
/// While a modal dialog is open on another program's (or toolkit's) window, Windows gives that window no
/// input. On an X server the dialog is transient for it and modal, which window managers heed; nothing else
/// keeps input from it there. Elsewhere, and for a window that is gone, the dialog stands by itself.
class WindowVariant
{
  public:
    WindowVariant() = default;
    explicit WindowVariant(HWND nativeWindow) : native(nativeWindow) {}
    HWND Native() const noexcept { return native; }
    bool IsEmpty() const noexcept { return native == nullptr; }

  private:
    HWND native = nullptr;
};

} // namespace zetui::ui
