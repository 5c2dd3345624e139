#pragma once

#include <optional>
#include <utility>

#include <zetui/Export.h>

namespace zetui::skins {

/// The sizes in the rows of a list, in pixels.
struct ListSizes
{
    float rowHeight;
    /// Above and below a text, and left and right of it. The second puts texts below their column's title.
    std::pair<float, float> cellPadding;
    /// The gap left of a checkbox.
    float checkboxInset;
    /// The height of a button. Without one, the button is as high as the row less `roomAroundButton`.
    std::optional<float> buttonHeight;
    /// The room above and below a button, both together.
    float roomAroundButton;
    /// The gap right of a button.
    float buttonInset;
    /// The gap between a text and the button behind it.
    float buttonGap;
    /// The surface behind a failure's text reaches beyond the text by this much, left and right.
    float surfaceBesideText;
    /// The room above that surface, and below it.
    float roomAroundSurface;

    float ButtonHeight(float height) const { return buttonHeight.value_or(height - roomAroundButton); }
};

/// The sizes of the skin in use.
ZETUI_API const ListSizes& GetListSizes();

} // namespace zetui::skins
