#include "screen/ParentWindow.h"

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QWidget>
#include <QWindow>

#include "screen/DialogPlace.h"
#include "screen/ForeignWindow.h"

namespace zetui::ui {

namespace {

WId IdOf(WindowVariant window)
{
    return reinterpret_cast<WId>(window.Native());
}

bool IsForeign(WindowVariant window)
{
    return !window.IsEmpty() && !QWidget::find(IdOf(window));
}

/// Makes a foreign window the owner of a dialog while this lives. Showing the dialog takes away an owner that
/// is no window of the toolkit, so the owner is set again after each showing.
class ForeignOwner : public QObject
{
  public:
    ForeignOwner(QWidget& ownedDialog, HWND foreignWindow) : dialog(&ownedDialog), owner(foreignWindow)
    {
        dialog->installEventFilter(this);
        Set(owner);
    }
    ~ForeignOwner() override
    {
        // Otherwise the dialog's window would be destroyed with the other one.
        Set(nullptr);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Show)
            QMetaObject::invokeMethod(
                this, [this] { Set(owner); }, Qt::QueuedConnection);
        return QObject::eventFilter(watched, event);
    }

  private:
    void Set(HWND newOwner) const
    {
        if (dialog)
            SetForeignOwner(reinterpret_cast<HWND>(dialog->winId()), newOwner);
    }

    QPointer<QWidget> dialog;
    HWND owner;
};

} // namespace

QWidget* FindParentWidget(WindowVariant parent)
{
    if (parent.IsEmpty()) {
        QWidget* const modal = QApplication::activeModalWidget();
        return modal ? modal : QApplication::activeWindow();
    }
    QWidget* const widget = QWidget::find(IdOf(parent));
    return widget ? widget->window() : nullptr;
}

void PlaceOnForeignParent(QWidget& dialog, WindowVariant parent)
{
    if (!IsForeign(parent))
        return;
    dialog.adjustSize();
    dialog.move(CentredOnParent(dialog.size(), parent).topLeft());
}

ParentWindowLock::ParentWindowLock(QWidget& dialog, WindowVariant parent)
{
    dialog.setWindowModality(parent.IsEmpty() ? Qt::ApplicationModal : Qt::WindowModal);
    if (!IsForeign(parent))
        return;
    // The parent is no window of this application, so that nothing else of the application may be used while
    // the dialog is open.
    dialog.setWindowModality(Qt::ApplicationModal);
    // A window that is gone must not become the parent, because its number may be another program's next.
    if (ForeignWindowPlace(parent.Native())) {
        foreign.reset(QWindow::fromWinId(IdOf(parent)));
        if (foreign) {
            dialog.winId();
            dialog.windowHandle()->setTransientParent(foreign.get());
        }
        owner = std::make_unique<ForeignOwner>(dialog, parent.Native());
    }
    if (EnableForeignWindow(parent.Native(), false))
        locked = parent.Native();
}

ParentWindowLock::~ParentWindowLock()
{
    if (locked)
        EnableForeignWindow(locked, true);
}

} // namespace zetui::ui
