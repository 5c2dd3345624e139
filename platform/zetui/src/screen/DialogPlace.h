#pragma once

#include <QRect>
#include <QSize>

#include <zetcore/geom/RectT.h>
#include <zetui/screen/WindowVariant.h>

namespace zetui::ui {

/// The place of a window with content of this size that nobody has placed. It is in the middle of its parent,
/// or of the screen, and within reach.
QRect CentredOnParent(QSize content, WindowVariant parent);
/// The place in the middle of the main screen. It is no larger than there is room.
QRect InMiddleOfScreen(QSize content);
/// The place itself if the user can reach it on today's screens, otherwise one that the user can reach.
QRect OnScreen(const zetcore::geom::RectT<int>& content);

} // namespace zetui::ui
