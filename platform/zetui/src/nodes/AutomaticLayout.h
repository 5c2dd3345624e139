#pragma once

#include <optional>
#include <vector>

#include <zetcore/geom/RectT.h>
#include <zetui/nodes/UI_SubView.h>

namespace zetui::ui {

struct LayoutSize
{
    float width = 0, height = 0;
    friend bool operator==(const LayoutSize&, const LayoutSize&) = default;
};

struct LayoutChild
{
    zetcore::geom::RectT<float> frame;
    unsigned constraints = 0;
    /// The least width with which the child is still of use. It gives way down to it. Empty: it gives no way.
    std::optional<float> leastWidth = std::nullopt;
};

/// The places of the children of a view of size `from` when its size is `to`. In each direction:
///
/// - A child with constraints there keeps the distances that they name: both sides stretch it (unless its
///   size is fixed: then the first side holds), one side moves it with that side.
/// - Another child, where children are scaled: across the arrangement, with margins kept, it keeps both
///   distances. Along it, with margins kept, the gaps stay and the children share what the view has grown or
///   shrunk by in proportion to their lengths (fixed ones and those beside a child that constraints stretch
///   do not). Without margins everything is scaled in proportion. Fixed sizes stay.
/// - Where children are not scaled: with margins kept, a child keeps its distance to the nearer side;
///   otherwise it stays.
///
/// When children that keep their distance to the right would then lie on those that keep theirs to the left,
/// they give way (`GiveWay`).
std::vector<zetcore::geom::RectT<float>> LayOutChildren(const AutoLayout& layout, LayoutSize from,
                                                        LayoutSize to,
                                                        const std::vector<LayoutChild>& children);

/// Moves the children that stick to the right edge out of the way of those that stick to the left one. From
/// the left, each one becomes narrower and then moves, as long as all of them stay left of where the last one
/// ends. One that finds no room goes behind those of the left edge, so that the others have its room. When
/// none finds room, all stay. Only the children of a horizontal layout give way.
std::vector<zetcore::geom::RectT<float>> GiveWay(const AutoLayout& layout,
                                                 const std::vector<LayoutChild>& children);

} // namespace zetui::ui
