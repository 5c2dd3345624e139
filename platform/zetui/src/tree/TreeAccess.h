#pragma once

#include <zetui/tree/UI_MultiColumnTree.h>

namespace zetui::controls {

/// Operations on rows and headers that only the parts of a tree use.
struct TreeAccess
{
    using TreeState = UI_MultiColumnTree::TreeState;

    static TreeState& StateOf(const UI_MultiColumnTree& tree) noexcept { return *tree.tree; }
    static int FillIndexOf(const UI_MultiColumnTreeRow& row) noexcept { return row.index; }
    static int& SortedPlaceOf(UI_MultiColumnTreeRow& row) noexcept { return row.sortedPlace; }
    static void Attach(UI_MultiColumnTreeRow& row, UI_MultiColumnTree* tree, int index) noexcept
    {
        row.tree = tree;
        row.index = index;
    }
    static void Detach(UI_MultiColumnTreeRow& row) noexcept { Attach(row, nullptr, -1); }
    static void ForgetTree(UI_MultiColumnTreeHeaderRow& header) noexcept { header.tree = nullptr; }
};

} // namespace zetui::controls
