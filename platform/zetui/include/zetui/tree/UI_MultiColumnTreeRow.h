#pragma once

#include <memory>

#include <zetui/Export.h>
#include <zetui/nodes/UI_SubView.h>
#include <zetui/utility/IntrusivePtr.h>
#include <zetui/utility/RefCountedObject.h>

namespace zetui::controls {

class UI_MultiColumnTree;

/// One row of a tree. It has no data of its own, because the tree's callbacks give its texts. Rows are small,
/// since a list may have 100,000 of them.
class ZETUI_API UI_MultiColumnTreeRow : public utility::RefCountedObject
{
  public:
    /// Rows that are `selectable` can be selected. A row may have no tree yet: `AppendRow` attaches it.
    explicit UI_MultiColumnTreeRow(bool selectable, UI_MultiColumnTree* tree = nullptr);

    UI_MultiColumnTree* GetTree() const noexcept { return tree; }
    bool IsSelectable() const noexcept { return selectable; }
    /// The view in the row's cell at this position, into which controls may be inserted. Position 0 is the
    /// first cell that the header shows. The view is made on first use and kept while the row is visible;
    /// while it is not, the answer is an empty view that nobody keeps. Its coordinates are the cell's. Null
    /// for a position that does not exist, and for a row in no tree.
    utility::IntrusivePtr<ui::UI_SubView> GetCellView(int position);

  protected:
    ~UI_MultiColumnTreeRow() override;

  private:
    friend class UI_MultiColumnTree;
    friend struct TreeAccess;
    UI_MultiColumnTree* tree;
    /// The row's place in fill order. The tree sets it.
    int index = -1;
    /// The row's place among the rows that were sorted last. The tree sets it.
    int sortedPlace = -1;
    bool selectable;
};

} // namespace zetui::controls
