#pragma once

#include <limits>
#include <vector>

#include <zetcore/geom/RectT.h>
#include <zetui/nodes/UI_SubView.h>

#include "nodes/AutomaticLayout.h"

namespace zetui::ui {

struct RoomItem
{
    zetcore::geom::RectT<float> frame;
    /// The least size that the item must have; 0 when any length will do.
    LayoutSize needed;
    /// The view keeps no more than this to the right of the item and below it.
    LayoutSize margin{std::numeric_limits<float>::infinity(), std::numeric_limits<float>::infinity()};
};

struct Room
{
    std::vector<zetcore::geom::RectT<float>> frames;
    /// The size of the view. It is never less than it was.
    LayoutSize size;
};

/// Gives every item what it needs. It grows to the right, and evenly up and down. What stands behind it in
/// its row, or below it, moves as far as it must to keep its gap; a wide gap may shrink. The view grows by as
/// much as would stick out.
Room MakeRoom(const std::vector<RoomItem>& items, LayoutSize view);

/// Makes room for the texts of a whole tree of nodes, from the leaves up. It changes the frames of all nodes
/// below the view, and returns the size that the view itself needs. What sticks to a side of a view that must
/// grow moves with that side. A hidden node gets no room for its text.
LayoutSize MakeRoomForTexts(UI_SubView& view);

} // namespace zetui::ui
