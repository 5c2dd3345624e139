#pragma once

#include <zetcore/geom/RectT.h>

/// The tool strips show the controls that still have room.
namespace zetaudiopluginhostui {

using RectF = zetcore::geom::RectT<float>;

/// A button shows while it ends left of the section's right edge; both in the same coordinates.
constexpr bool EndsInside(const RectF& button, const RectF& section)
{
    return button.left + button.width < section.left + section.width;
}

/// A find control shows while it begins right of the strip of buttons; both in the same coordinates.
constexpr bool BeginsBehind(const RectF& control, const RectF& strip)
{
    return strip.left + strip.width < control.left;
}

} // namespace zetaudiopluginhostui
