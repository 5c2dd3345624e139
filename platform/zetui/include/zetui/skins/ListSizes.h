#pragma once

#include <optional>
#include <utility>

#include <zetui/Export.h>

namespace zetui::skins {

/// The sizes in the rows of a list, in pixels.
struct ListSizes
{
    float rowHeight;
    /// Left and right of a text, so that it stands below its column's title.
    std::pair<float, float> cellPadding;
    /// Left of a checkbox.
    float checkboxInset;
    /// The height of a button; without one, as much as the row has left by `roomAroundButton`.
    std::optional<float> buttonHeight;
    /// Above and below a button together.
    float roomAroundButton;
    /// Right of a button.
    float buttonInset;
    /// Between a text and the button behind it.
    float buttonGap;
    /// How far the surface behind a failure's text reaches beyond the text, left and right.
    float surfaceBesideText;
    /// Above and below that surface.
    float roomAroundSurface;

    float ButtonHeight(float height) const { return buttonHeight.value_or(height - roomAroundButton); }
};

/// Those of the skin in use.
ZETUI_API const ListSizes& GetListSizes();

} // namespace zetui::skins
