#include "nodes/KeyEvents.h"

namespace zetui::ui {

namespace {

constexpr int backspaceKey = 8;
static_assert(static_cast<int>(kDownKey) == static_cast<int>(Qt::Key_Down) &&
              static_cast<int>(kF5Key) == static_cast<int>(Qt::Key_F5));

} // namespace

int OSCodeOf(int key)
{
    switch (key) {
    case Qt::Key_Backspace:
        return backspaceKey;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return kTabKey;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return kReturnKey;
    case Qt::Key_Escape:
        return kEscapeKey;
    default:
        return key;
    }
}

KeyboardEvent KeyboardEventOf(QKeyEvent& event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    return KeyboardEvent(OSCodeOf(event.key()), modifiers.testFlag(Qt::ShiftModifier),
                         modifiers.testFlag(Qt::ControlModifier), modifiers.testFlag(Qt::AltModifier), &event,
                         event.isAutoRepeat());
}

} // namespace zetui::ui
