#pragma once

#include <memory>

#include <zetui/ui/WindowVariant.h>

class QWidget;
class QWindow;

namespace zetui::dialogs {

/// The window of this application behind a native handle; null for a foreign one. Where there is no handle,
/// the window that is in use, if any.
QWidget* FindParentWidget(ui::WindowVariant parent);

/// Ties a dialog to the window that it is to be opened for, while it lives: the dialog is modal to it. A
/// foreign window becomes the dialog's transient parent, takes no input, and has the dialog in its middle; a
/// window of this application should be the dialog's parent widget.
class ParentWindowLock
{
  public:
    ParentWindowLock(QWidget& dialog, ui::WindowVariant parent);
    ~ParentWindowLock();
    ParentWindowLock(const ParentWindowLock&) = delete;
    ParentWindowLock& operator=(const ParentWindowLock&) = delete;

  private:
    /// Null when nothing was locked.
    HWND locked = nullptr;
    std::unique_ptr<QWindow> foreign;
};

} // namespace zetui::dialogs
