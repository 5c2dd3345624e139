#pragma once

#include <optional>
#include <vector>

#include <zetui/nodes/UI_SubView.h>
#include <zetui/utility/IntrusivePtr.h>

#include "nodes/AutomaticLayout.h"

namespace zetui::ui {

struct UI_SubView::ViewState
{
    /// The places of the children when somebody last placed them. Each layout starts from there, so that a
    /// view that shrinks and grows again gets its old look back.
    struct Reference
    {
        LayoutSize size;
        std::vector<LayoutChild> children;
    };

    std::vector<utility::IntrusivePtr<UI_Node>> children;
    AutoLayout layout;
    unsigned constraints = 0;
    /// The size for which the children are laid out.
    LayoutSize size;
    std::optional<Reference> reference;
};

} // namespace zetui::ui
