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
    /// It must have this at least; 0 when any length will do.
    LayoutSize needed;
    /// To the right and below: the view keeps no more than this behind it.
    LayoutSize margin{std::numeric_limits<float>::infinity(), std::numeric_limits<float>::infinity()};
};

struct Room
{
    std::vector<zetcore::geom::RectT<float>> frames;
    /// Of the view; never less than it was.
    LayoutSize size;
};

/// Gives every item what it needs: it grows to the right, and evenly up and down; what stands behind it in
/// its row, or below it, moves as far as it must to keep its gap (of a wide gap, a comfortable rest). The
/// view grows with what would stick out.
Room MakeRoom(const std::vector<RoomItem>& items, LayoutSize view);

/// Makes room for the texts of a whole tree of nodes, from the leaves up: the frames of all nodes below the
/// view change, and the size that the view itself needs is returned. What sticks to a side of a view that
/// must grow goes with that side. A node that is hidden gets no room for its text.
LayoutSize MakeRoomForTexts(UI_SubView& view);

} // namespace zetui::ui
