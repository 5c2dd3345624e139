#include "nodes/AutomaticLayout.h"

#include <algorithm>
#include <utility>

namespace zetui::ui {

namespace {

using RectF = zetcore::geom::RectT<float>;

/// One direction of a child.
struct Span
{
    float start, length;
    bool sticksToStart, sticksToEnd, fixed;

    float End() const { return start + length; }
    bool IsConstrained() const { return sticksToStart || sticksToEnd; }
    bool IsStretched() const { return sticksToStart && sticksToEnd && !fixed; }
};

using Spans = std::vector<Span>;

struct Axis
{
    float from, to;
    bool along, scale, margins;
};

void PlaceConstrained(Span& span, float growth)
{
    if (span.IsStretched())
        span.length = std::max(0.0F, span.length + growth);
    else if (!span.sticksToStart)
        span.start += growth;
}

/// The lengths along the axis that grow: those that flexible children cover, with overlaps counted once.
std::vector<std::pair<float, float>> FlexibleStretches(const Spans& spans)
{
    std::vector<std::pair<float, float>> covered;
    for (const Span& span : spans) {
        if (!span.IsConstrained() && !span.fixed && span.length > 0)
            covered.emplace_back(span.start, span.End());
    }
    std::sort(covered.begin(), covered.end());
    std::vector<std::pair<float, float>> merged;
    for (const auto& stretch : covered) {
        if (!merged.empty() && stretch.first <= merged.back().second)
            merged.back().second = std::max(merged.back().second, stretch.second);
        else
            merged.push_back(stretch);
    }
    return merged;
}

/// The part of the flexible stretches that lies before the place.
float CoveredBefore(const std::vector<std::pair<float, float>>& stretches, float place)
{
    float covered = 0;
    for (const auto& [start, end] : stretches)
        covered += std::clamp(place - start, 0.0F, end - start);
    return covered;
}

void ShareGrowth(Spans& spans, float growth)
{
    if (std::any_of(spans.begin(), spans.end(), [](const Span& span) { return span.IsStretched(); }))
        return;
    const auto stretches = FlexibleStretches(spans);
    float total = 0;
    for (const auto& [start, end] : stretches)
        total += end - start;
    if (total <= 0)
        return;
    const float factor = std::max(growth / total, -1.0F);
    for (Span& span : spans) {
        if (span.IsConstrained())
            continue;
        const float end = span.End() + factor * CoveredBefore(stretches, span.End());
        span.start += factor * CoveredBefore(stretches, span.start);
        if (!span.fixed)
            span.length = std::max(0.0F, end - span.start);
    }
}

void PlaceUnconstrained(Span& span, const Axis& axis)
{
    const float growth = axis.to - axis.from;
    if (!axis.scale) {
        const float middle = span.start + span.length / 2;
        if (axis.margins && middle > axis.from / 2)
            span.start += growth;
        return;
    }
    if (axis.margins) {
        if (!span.fixed)
            span.length = std::max(0.0F, span.length + growth);
        return;
    }
    if (axis.from <= 0)
        return;
    span.start = span.start * axis.to / axis.from;
    if (!span.fixed)
        span.length = span.length * axis.to / axis.from;
}

void Place(Spans& spans, const Axis& axis)
{
    const bool share = axis.along && axis.scale && axis.margins;
    if (share)
        ShareGrowth(spans, axis.to - axis.from);
    for (Span& span : spans) {
        if (span.IsConstrained())
            PlaceConstrained(span, axis.to - axis.from);
        else if (!share)
            PlaceUnconstrained(span, axis);
    }
}

/// The gap between what sticks to the left edge and what gives way to it.
constexpr float leastGap = 6;

/// Makes these children begin no earlier than the place. False, and nothing has changed, when there is no
/// room for them.
bool Squeeze(std::vector<RectF>& frames, const std::vector<LayoutChild>& children,
             const std::vector<std::size_t>& those, float place)
{
    std::vector<RectF> squeezed = frames;
    float endBefore = place;
    for (const std::size_t index : those) {
        RectF& frame = squeezed[index];
        if (index != those.front())
            place += std::max(0.0F, frame.left - endBefore);
        endBefore = frame.left + frame.width;
        const float shift = std::max(0.0F, place - frame.left);
        const float spare = std::max(0.0F, frame.width - children[index].leastWidth.value_or(frame.width));
        frame.left += shift;
        frame.width -= std::min(shift, spare);
        place = frame.left + frame.width;
    }
    constexpr float tolerance = 0.01F;
    if (place > endBefore + tolerance)
        return false;
    frames = std::move(squeezed);
    return true;
}

} // namespace

std::vector<RectF> LayOutChildren(const AutoLayout& layout, LayoutSize from, LayoutSize to,
                                  const std::vector<LayoutChild>& children)
{
    Spans across, down;
    for (const auto& [frame, constraints, leastWidth] : children) {
        across.push_back({frame.left, frame.width, (constraints & kConstraintLeft) != 0,
                          (constraints & kConstraintRight) != 0, (constraints & kConstraintFixedWidth) != 0});
        down.push_back({frame.top, frame.height, (constraints & kConstraintTop) != 0,
                        (constraints & kConstraintBottom) != 0, (constraints & kConstraintFixedHeight) != 0});
    }
    if (layout.enabled && layout.layoutChildren) {
        Place(across,
              {from.width, to.width, layout.horizontal, layout.scaleChildren, layout.maintainMargins});
        Place(down,
              {from.height, to.height, !layout.horizontal, layout.scaleChildren, layout.maintainMargins});
    }
    std::vector<LayoutChild> placed = children;
    for (std::size_t i = 0; i < children.size(); ++i)
        placed[i].frame = {across[i].start, down[i].start, across[i].length, down[i].length};
    return GiveWay(layout, placed);
}

std::vector<RectF> GiveWay(const AutoLayout& layout, const std::vector<LayoutChild>& children)
{
    std::vector<RectF> frames;
    std::vector<std::size_t> atRight;
    std::optional<float> taken;
    for (const LayoutChild& child : children) {
        const bool left = (child.constraints & kConstraintLeft) != 0;
        const bool right = (child.constraints & kConstraintRight) != 0;
        if (left && !right)
            taken = std::max(taken.value_or(0), child.frame.left + child.frame.width);
        else if (right && !left)
            atRight.push_back(frames.size());
        frames.push_back(child.frame);
    }
    if (!layout.enabled || !layout.layoutChildren || !layout.horizontal || !taken)
        return frames;
    std::stable_sort(atRight.begin(), atRight.end(), [&frames](std::size_t one, std::size_t other) {
        return frames[one].left < frames[other].left;
    });
    for (std::size_t first = 0; first < atRight.size(); ++first) {
        const std::vector<std::size_t> those(atRight.begin() + static_cast<std::ptrdiff_t>(first),
                                             atRight.end());
        if (!Squeeze(frames, children, those, *taken + leastGap))
            continue;
        for (std::size_t gone = 0; gone < first; ++gone) {
            RectF& frame = frames[atRight[gone]];
            frame.left = std::min(frame.left, *taken - frame.width);
        }
        break;
    }
    return frames;
}

} // namespace zetui::ui
