#pragma once

/// The native window handle of the host's window system: Windows' own type there; elsewhere the window's
/// number (an X11 window id, for example) in the same kind of pointer.
struct HWND__;
using HWND = HWND__*;

namespace zetui::ui {

/// A window to show something on: a native one, or none.
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
