#pragma once

#include <zetui/ui/WindowVariant.h>

class QWidget;

namespace zetui::dialogs {

/// The window of this application behind a native handle; null for a foreign one and for none.
QWidget* FindParentWidget(ui::WindowVariant parent);

/// Ties a dialog to the window that it was opened for, while it lives: the foreign window becomes the
/// dialog's transient parent and takes no input. Where the parent is a widget of this application (which
/// should be the dialog's parent widget then) Qt does the same by itself.
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
};

} // namespace zetui::dialogs
