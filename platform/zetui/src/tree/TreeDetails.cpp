// The foot of a tree, and what it says about a cell.
#include <utility>

#include "application/HandlerErrors.h"
#include "nodes/NodeAccess.h"
#include "pixmill/QtConversions.h"
#include "tree/TreeState.h"

namespace zetui::controls {

using TreeState = UI_MultiColumnTree::TreeState;

TreeFoot& TreeState::RequireFoot()
{
    if (!foot) {
        foot = new TreeFoot;
        ui::NodeAccess::SetCompanion(&owner, foot, [lines = foot.data()](const QRect& whole) {
            const int height = lines->HeightIn(whole.height());
            lines->setGeometry(whole.left(), whole.top() + whole.height() - height, whole.width(), height);
            return whole.adjusted(0, 0, 0, -height);
        });
        if (view && view->window() == foot->window())
            foot->FollowInTabOrder(*view);
    }
    return *foot;
}

void TreeState::SetDetails(std::function<std::wstring(RowPtr)> function, const std::wstring& name,
                           const std::wstring& prompt)
{
    rowDetails = std::move(function);
    if (!rowDetails && !foot)
        return;
    RequireFoot().ShowDetails(static_cast<bool>(rowDetails));
    foot->SetNames(pixmill::ToQString(name), pixmill::ToQString(prompt));
    UpdateDetails();
    ui::NodeAccess::PlaceCompanion(&owner);
}

void TreeState::SetNotice(const std::wstring& text, const std::wstring& command,
                          std::function<void()> pressed)
{
    if (text.empty() && !foot)
        return;
    RequireFoot().SetNotice(pixmill::ToQString(text), pixmill::ToQString(command), std::move(pressed));
    ui::NodeAccess::PlaceCompanion(&owner);
}

std::wstring TreeState::TooltipAt(const RowPtr& row, int position) const
{
    std::wstring tooltip = CellTooltip(row, position);
    if (!cutText || !row || !view || ColumnAtPosition(position) < 0)
        return tooltip;
    const auto width = static_cast<float>(view->columnWidth(ColumnAtPosition(position)));
    if (const std::wstring whole = cutText(row, position, width); !whole.empty())
        tooltip = tooltip.empty() ? whole : whole + L"\n" + tooltip;
    return tooltip;
}

void TreeState::UpdateDetails()
{
    if (!foot)
        return;
    std::wstring details;
    if (const RowPtr row = Hold(model.RowAt(FirstSelectedPlace())); row && rowDetails)
        ui::CallFromToolkit([&] { details = rowDetails(row); });
    // An empty place has no row to select.
    foot->ShowPrompt(model.rowCount() > 0);
    if (foot->SetDetails(pixmill::ToQString(details)))
        ui::NodeAccess::PlaceCompanion(&owner);
}

} // namespace zetui::controls
