#include "nodes/KeyEvents.h"

namespace zetui::ui {

int OSCodeOf(int key)
{
    switch (key) {
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return 9;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Escape:
        return 27;
    default:
        return key;
    }
}

KeyboardEvent KeyboardEventOf(QKeyEvent& event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    return KeyboardEvent(OSCodeOf(event.key()), modifiers.testFlag(Qt::ShiftModifier),
                         modifiers.testFlag(Qt::ControlModifier), modifiers.testFlag(Qt::AltModifier),
                         &event);
}

} // namespace zetui::ui
