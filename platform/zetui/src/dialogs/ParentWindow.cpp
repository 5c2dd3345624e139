#include "dialogs/ParentWindow.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>

#include "dialogs/ForeignWindow.h"

namespace zetui::dialogs {

namespace {

WId IdOf(ui::WindowVariant window)
{
    return reinterpret_cast<WId>(window.Native());
}

void MoveToMiddle(QWidget& dialog, const QWindow& parent)
{
    dialog.adjustSize();
    QRect frame(QPoint(0, 0), dialog.size());
    frame.moveCenter(parent.frameGeometry().center());
    dialog.move(frame.topLeft());
}

} // namespace

QWidget* FindParentWidget(ui::WindowVariant parent)
{
    if (parent.IsEmpty()) {
        QWidget* const modal = QApplication::activeModalWidget();
        return modal ? modal : QApplication::activeWindow();
    }
    QWidget* const widget = QWidget::find(IdOf(parent));
    return widget ? widget->window() : nullptr;
}

ParentWindowLock::ParentWindowLock(QWidget& dialog, ui::WindowVariant parent)
{
    dialog.setWindowModality(parent.IsEmpty() ? Qt::ApplicationModal : Qt::WindowModal);
    if (parent.IsEmpty() || QWidget::find(IdOf(parent)))
        return;
    // No window of this application: nothing else of it may be used while the dialog is open.
    dialog.setWindowModality(Qt::ApplicationModal);
    foreign.reset(QWindow::fromWinId(IdOf(parent)));
    if (foreign) {
        dialog.winId();
        dialog.windowHandle()->setTransientParent(foreign.get());
        MoveToMiddle(dialog, *foreign);
    }
    if (EnableForeignWindow(parent.Native(), false))
        locked = parent.Native();
}

ParentWindowLock::~ParentWindowLock()
{
    if (locked)
        EnableForeignWindow(locked, true);
}

} // namespace zetui::dialogs
