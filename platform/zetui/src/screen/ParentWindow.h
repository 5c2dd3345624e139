#pragma once

#include <memory>

#include <zetui/screen/WindowVariant.h>

class QObject;
class QWidget;
class QWindow;

namespace zetui::ui {

/// The window of this application behind a native handle; null for a foreign window. Without a handle, it is
/// the window that is in use, if any.
QWidget* FindParentWidget(WindowVariant parent);

/// Moves a dialog that is not shown yet to the middle of a foreign parent. Qt does so by itself for other
/// parents.
void PlaceOnForeignParent(QWidget& dialog, WindowVariant parent);

/// Ties a dialog to the window that it is to be opened for, and makes it modal to that window, for as long as
/// this lives. A foreign window becomes the dialog's transient parent and takes no input. A window of this
/// application should be the dialog's parent widget.
class ParentWindowLock
{
  public:
    ParentWindowLock(QWidget& dialog, WindowVariant parent);
    ~ParentWindowLock();
    ParentWindowLock(const ParentWindowLock&) = delete;
    ParentWindowLock& operator=(const ParentWindowLock&) = delete;

  private:
    /// Null when nothing was locked.
    HWND locked = nullptr;
    std::unique_ptr<QWindow> foreign;
    std::unique_ptr<QObject> owner;
};

} // namespace zetui::ui
