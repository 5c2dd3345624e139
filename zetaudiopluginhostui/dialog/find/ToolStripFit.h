#pragma once

#include <zetcore/geom/RectT.h>

/// The tool strips hide controls that have no room.
namespace zetaudiopluginhostui {

using RectF = zetcore::geom::RectT<float>;

/// A button is shown while it ends left of the section's right edge. Both have the same coordinates.
constexpr bool EndsInside(const RectF& button, const RectF& section)
{
    return button.left + button.width < section.left + section.width;
}

/// A find control is shown while it begins right of the strip of buttons. Both have the same coordinates.
constexpr bool BeginsBehind(const RectF& control, const RectF& strip)
{
    return strip.left + strip.width < control.left;
}

} // namespace zetaudiopluginhostui
