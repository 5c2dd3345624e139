#pragma once

#include <functional>
#include <string>

#include <zetui/Export.h>

/// Services of the desktop for a window. Main thread; there must be windows (`InitializeWindows`).
namespace zetui::ui {

/// Puts the text on the clipboard.
ZETUI_API void CopyText(const std::wstring& text);
/// Shows the file or folder in the system's file manager, selected where that can be. One that is gone is
/// replaced by the nearest folder above it that is there. Does not wait for the file manager. `failed` is
/// called, at once or later from the event loop, when none could be started, and for an empty path.
ZETUI_API void ShowInFileManager(const std::wstring& path, const std::function<void()>& failed);

} // namespace zetui::ui
