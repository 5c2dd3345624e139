#pragma once

#include <memory>

#include <zetui/Export.h>
#include <zetui/nodes/UI_SubView.h>
#include <zetui/utility/IntrusivePtr.h>
#include <zetui/utility/RefCountedObject.h>

namespace zetui::controls {

class UI_MultiColumnTree;

/// One row of a tree. It carries no data of its own: the tree's callbacks give its texts. Small; a list may
/// have 100,000 of them.
class ZETUI_API UI_MultiColumnTreeRow : public utility::RefCountedObject
{
  public:
    /// `selectable` rows can be selected. Null: `AppendRow` attaches it.
    explicit UI_MultiColumnTreeRow(bool selectable, UI_MultiColumnTree* tree = nullptr);

    UI_MultiColumnTree* GetTree() const noexcept { return tree; }
    bool IsSelectable() const noexcept { return selectable; }
    /// The view in the row's cell at this position (0 is the first cell that the header shows), into which
    /// controls may be inserted. Made on first use; kept while the row is visible. Its coordinates are the
    /// cell's. Null for a position that there is not, and for a row in no tree; an empty one that nobody
    /// keeps while the row is not visible.
    utility::IntrusivePtr<ui::UI_SubView> GetCellView(int position);

  protected:
    ~UI_MultiColumnTreeRow() override;

  private:
    friend class UI_MultiColumnTree;
    friend struct TreeAccess;
    UI_MultiColumnTree* tree;
    /// Its place in fill order; the tree's.
    int index = -1;
    /// Among the rows that were sorted last; the tree's.
    int sortedPlace = -1;
    bool selectable;
};

} // namespace zetui::controls
