#pragma once

#include <QRect>
#include <QSize>

#include <zetcore/geom/RectT.h>
#include <zetui/ui/WindowVariant.h>

namespace zetui::ui {

/// Where a window with content of this size belongs that nobody has placed: in the middle of its parent, or
/// of the screen, and within reach.
QRect CentredOnParent(QSize content, WindowVariant parent);
/// The place itself, or one within reach on today's screens.
QRect OnScreen(const zetcore::geom::RectT<int>& content);

} // namespace zetui::ui
