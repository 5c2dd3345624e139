#include "dialog/drawing/BoxView.h"

#include <zetcore/utility/NullPtrException.h>
#include <zetui/pixmill/Path.h>
#include <zetui/pixmill/Pixmill.h>
#include <zetui/skins/Skins.h>

namespace zetaudiopluginhostui {

BoxView::~BoxView() = default;

void BoxView::UI_Draw(zetui::pixmill::Pixmill* context)
{
    if (!context)
        zetcore::utility::DoThrowNullPtrException("Pixmill");
    UI_SubView::UI_Draw(context);
    // A line one pixel wide covers whole pixels when it runs through their middles.
    RectF outline = UI_GetLocalRectF(false);
    outline.left += 0.5F;
    outline.top += 0.5F;
    outline.width -= 1;
    outline.height -= 1;

    const zetui::pixmill::PathP path = context->Supplier().CreatePath();
    if (!path)
        zetcore::utility::DoThrowNullPtrException("PathP");
    zetui::utils::FormRect(path, outline, {true, true, true, true});
    const zetui::pixmill::PenP pen =
        context->Supplier().CreatePen(zetui::skins::utilities::GetBoxOutlineColor(), 1);
    if (!pen)
        zetcore::utility::DoThrowNullPtrException("PenP");
    context->StrokePath(path, pen);
}

} // namespace zetaudiopluginhostui
