#pragma once

#include <QKeyEvent>

#include <zetui/nodes/KeyboardEvent.h>

namespace zetui::ui {

/// The OS key code of one of Qt's keys. Keys that type nothing and have no code of their own keep Qt's
/// number, which no character has.
int OSCodeOf(int key);
/// The result is valid as long as the event is.
KeyboardEvent KeyboardEventOf(QKeyEvent& event);

} // namespace zetui::ui
