#include "dialogs/ParentWindow.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>

#include "dialogs/ForeignWindow.h"
#include "ui/DialogPlace.h"

namespace zetui::dialogs {

namespace {

WId IdOf(ui::WindowVariant window)
{
    return reinterpret_cast<WId>(window.Native());
}

bool IsForeign(ui::WindowVariant window)
{
    return !window.IsEmpty() && !QWidget::find(IdOf(window));
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

void PlaceOnForeignParent(QWidget& dialog, ui::WindowVariant parent)
{
    if (!IsForeign(parent))
        return;
    dialog.adjustSize();
    dialog.move(ui::CentredOnParent(dialog.size(), parent).topLeft());
}

ParentWindowLock::ParentWindowLock(QWidget& dialog, ui::WindowVariant parent)
{
    dialog.setWindowModality(parent.IsEmpty() ? Qt::ApplicationModal : Qt::WindowModal);
    if (!IsForeign(parent))
        return;
    // No window of this application: nothing else of it may be used while the dialog is open.
    dialog.setWindowModality(Qt::ApplicationModal);
    // A window that is gone must not become the parent: its number may be another program's next.
    if (ForeignWindowPlace(parent.Native()))
        foreign.reset(QWindow::fromWinId(IdOf(parent)));
    if (foreign) {
        dialog.winId();
        dialog.windowHandle()->setTransientParent(foreign.get());
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
