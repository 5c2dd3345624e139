#pragma once

#include <QRect>
#include <QSize>

#include <zetcore/geom/RectT.h>
#include <zetui/screen/WindowVariant.h>

namespace zetui::ui {

/// The place of a window with content of this size that nobody has placed: in the middle of its parent, or of
/// the screen, and within reach.
QRect CentredOnParent(QSize content, WindowVariant parent);
/// In the middle of the main screen, and no larger than it has room.
QRect InMiddleOfScreen(QSize content);
/// The place itself, or one within reach on today's screens.
QRect OnScreen(const zetcore::geom::RectT<int>& content);

} // namespace zetui::ui
