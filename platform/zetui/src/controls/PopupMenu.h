#pragma once

#include <QPoint>

#include <zetui/controls/UI_ContextMenu.h>

class QWidget;

namespace zetui::controls {

/// Shows the menu at a place on the screen and returns at once. The widget has the focus back when it closes.
/// With `byKeyboard`, the first command is marked. Does nothing for an empty menu.
void ShowPopupMenu(QWidget& owner, const UI_ContextMenu& menu, const QPoint& onScreen, bool byKeyboard);

} // namespace zetui::controls
