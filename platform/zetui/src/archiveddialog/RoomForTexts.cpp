#include "archiveddialog/RoomForTexts.h"

#include <algorithm>
#include <numeric>

#include "nodes/NodeAccess.h"

namespace zetui::ui {

namespace {

using RectF = zetcore::geom::RectT<float>;

/// A wider gap between items, or a wider margin, may shrink to this. In pixels.
constexpr float comfortableGap = 12;
constexpr float comfortableMargin = 24;

/// One direction of an item, before and after.
struct Segment
{
    float start, length, needed, mostMargin;
    /// The extent in the other direction. It tells what stands in the same row or column.
    float crossStart, crossEnd;
    float newStart = 0, newLength = 0;

    float End() const { return start + length; }
    float NewEnd() const { return newStart + newLength; }
    bool Meets(const Segment& other) const
    {
        return crossStart < other.crossEnd && other.crossStart < crossEnd;
    }
};

float Gap(float distance)
{
    return std::clamp(distance, 0.0F, comfortableGap);
}

float Margin(float distance)
{
    return std::clamp(distance, 0.0F, comfortableMargin);
}

/// Returns the length that the view needs.
float Spread(std::vector<Segment>& segments, float viewLength, bool growEvenly)
{
    std::vector<std::size_t> order(segments.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return segments[a].start < segments[b].start; });
    float neededLength = viewLength;
    for (std::size_t place = 0; place < order.size(); ++place) {
        Segment& item = segments[order[place]];
        item.newLength = std::max(item.length, item.needed);
        const float growth = item.newLength - item.length;
        item.newStart = growEvenly && growth > 0 ? std::max(0.0F, item.start - growth / 2) : item.start;
        for (std::size_t before = 0; before < place; ++before) {
            const Segment& other = segments[order[before]];
            if (other.End() <= item.start && other.Meets(item))
                item.newStart = std::max(item.newStart, other.NewEnd() + Gap(item.start - other.End()));
        }
        // Growing about its middle uses up the margin on either side.
        const float margin = viewLength - item.End() - (growEvenly ? growth / 2 : 0);
        if (item.NewEnd() > item.End())
            neededLength = std::max(neededLength, item.NewEnd() + Margin(std::min(margin, item.mostMargin)));
    }
    return neededLength;
}

} // namespace

Room MakeRoom(const std::vector<RoomItem>& items, LayoutSize view)
{
    std::vector<Segment> across, down;
    for (const auto& [frame, needed, margin] : items)
        across.push_back(
            {frame.left, frame.width, needed.width, margin.width, frame.top, frame.top + frame.height});
    Room room;
    room.size.width = Spread(across, view.width, false);
    for (std::size_t i = 0; i < items.size(); ++i) {
        const auto& [frame, needed, margin] = items[i];
        down.push_back(
            {frame.top, frame.height, needed.height, margin.height, across[i].newStart, across[i].NewEnd()});
    }
    room.size.height = Spread(down, view.height, true);
    for (std::size_t i = 0; i < items.size(); ++i)
        room.frames.push_back({across[i].newStart, down[i].newStart, across[i].newLength, down[i].newLength});
    return room;
}

LayoutSize MakeRoomForTexts(UI_SubView& view)
{
    const RectF own = view.UI_GetLocalRectF(false);
    const LayoutSize size{own.width, own.height};
    std::vector<LayoutChild> children = NodeAccess::LayoutChildrenOf(&view);
    std::vector<RoomItem> items;
    for (std::size_t i = 0; i < children.size(); ++i) {
        UI_Node* const child = view.GetChild(i).get();
        LayoutSize needed;
        if (!child->UI_IsShown()) {
            // Nobody reads a hidden text. It keeps its place, and nothing moves for it.
        } else if (NodeAccess::HasNeededSize(child)) {
            const QSizeF text = NodeAccess::NeededSize(child);
            needed = {static_cast<float>(text.width()), static_cast<float>(text.height())};
        } else if (auto* const inner = dynamic_cast<UI_SubView*>(child)) {
            needed = MakeRoomForTexts(*inner);
        }
        const RectF& frame = children[i].frame;
        items.push_back(
            {frame, needed, {own.width - frame.left - frame.width, own.height - frame.top - frame.height}});
    }
    Room room = MakeRoom(items, size);
    if (room.size != size) {
        const std::vector<RectF> grown = LayOutChildren(view.GetAutoLayout(), size, room.size, children);
        for (std::size_t i = 0; i < items.size(); ++i)
            items[i].frame = grown[i];
        room = MakeRoom(items, room.size);
    }
    for (std::size_t i = 0; i < items.size(); ++i)
        NodeAccess::SetFrameByLayout(view.GetChild(i).get(), room.frames[i]);
    NodeAccess::SetLaidOutSize(&view, room.size);
    return room.size;
}

} // namespace zetui::ui
