#include "archiveddialog/DialogWindow.h"

#include <algorithm>
#include <vector>

#include <QCloseEvent>
#include <QKeyEvent>

#include "application/HandlerErrors.h"
#include "dialogs/HeldKeys.h"
#include "nodes/NodeAccess.h"

namespace zetui::ui {

namespace {

/// Only the widgets of nodes count. A control takes care of the widgets inside it.
void CollectReadingOrder(const QWidget& parent, std::vector<QWidget*>& order)
{
    std::vector<QWidget*> children;
    for (QObject* const child : parent.children()) {
        auto* const widget = qobject_cast<QWidget*>(child);
        if (widget && NodeAccess::NodeOf(widget))
            children.push_back(widget);
    }
    std::stable_sort(children.begin(), children.end(),
                     [](const QWidget* one, const QWidget* other) { return one->y() < other->y(); });
    // A child that begins before the middle of the row's first is in its row.
    for (auto rowStart = children.begin(); rowStart != children.end();) {
        const int middle = (*rowStart)->y() + (*rowStart)->height() / 2;
        const auto rowEnd = std::find_if(rowStart, children.end(),
                                         [middle](const QWidget* widget) { return widget->y() > middle; });
        std::stable_sort(rowStart, rowEnd,
                         [](const QWidget* one, const QWidget* other) { return one->x() < other->x(); });
        rowStart = rowEnd;
    }
    for (QWidget* const child : children) {
        if (child->focusPolicy() & Qt::TabFocus)
            order.push_back(child);
        CollectReadingOrder(*child, order);
    }
}

} // namespace

DialogWindow::DialogWindow(QWidget* parent) : QDialog(parent) {}

void DialogWindow::reject()
{
    CallFromToolkit([this] {
        if (cancelled)
            cancelled();
    });
}

void DialogWindow::closeEvent(QCloseEvent* event)
{
    // The dialog decides. It hides the window when it closes.
    event->ignore();
    reject();
}

void DialogWindow::keyPressEvent(QKeyEvent* event)
{
    if (dialogs::IsHeldAnswer(*event))
        return;
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QDialog::keyPressEvent(event);
        return;
    }
    CallFromToolkit([this] {
        if (confirmed)
            confirmed();
    });
}

void DialogWindow::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    CallFromToolkit([this] {
        if (sizeChanged)
            sizeChanged();
    });
}

std::vector<QWidget*> ReadingOrder(const QWidget& parent)
{
    std::vector<QWidget*> order;
    CollectReadingOrder(parent, order);
    return order;
}

void ArrangeTabOrder(const QWidget& parent)
{
    const std::vector<QWidget*> order = ReadingOrder(parent);
    for (std::size_t i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order[i - 1], order[i]);
}

} // namespace zetui::ui
