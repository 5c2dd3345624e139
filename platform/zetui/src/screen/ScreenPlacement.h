#pragma once

#include <vector>

#include <zetcore/geom/RectT.h>

namespace zetui::ui {

/// The place of a window with this content at which the user can reach it. It stays where it is, as long as
/// enough of the strip above its content (where the title bar is) lies on one of the screens. Otherwise it
/// moves into the nearest screen, and becomes no larger than that. All of it is in global coordinates.
/// Screens are given without what panels cover.
zetcore::geom::RectT<int> KeepOnScreen(const zetcore::geom::RectT<int>& content,
                                       const std::vector<zetcore::geom::RectT<int>>& screens);

/// The place of a window with content of this size, and the title bar above it, in the middle of a screen. It
/// is no larger than there is room.
zetcore::geom::RectT<int> InMiddleOf(const zetcore::geom::RectT<int>& screen, int width, int height);

} // namespace zetui::ui
