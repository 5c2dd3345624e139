#include "dialogs/HeldKeys.h"

#include <QKeyEvent>

namespace zetui::dialogs {

bool IsHeldAnswer(const QKeyEvent& event)
{
    const int key = event.key();
    return event.isAutoRepeat() && (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape);
}

HeldAnswerFilter::HeldAnswerFilter(QObject* widget) : QObject(widget)
{
    widget->installEventFilter(this);
}

bool HeldAnswerFilter::eventFilter(QObject* watched, QEvent* event)
{
    return (event->type() == QEvent::KeyPress && IsHeldAnswer(*static_cast<QKeyEvent*>(event))) ||
           QObject::eventFilter(watched, event);
}

} // namespace zetui::dialogs
