#include <zetui/tree/UI_MultiColumnTreeRow.h>

#include "tree/TreeState.h"

namespace zetui::controls {

UI_MultiColumnTreeRow::UI_MultiColumnTreeRow(bool canBeSelected, UI_MultiColumnTree* rowTree)
    : tree(rowTree), selectable(canBeSelected)
{}

UI_MultiColumnTreeRow::~UI_MultiColumnTreeRow() = default;

utility::IntrusivePtr<ui::UI_SubView> UI_MultiColumnTreeRow::GetCellView(int position)
{
    return tree && index >= 0 ? TreeAccess::StateOf(*tree).cells.ViewAt(*this, position) : nullptr;
}

} // namespace zetui::controls
