#pragma once

#include <functional>
#include <string>

#include <zetui/Export.h>
#include <zetui/utility/RefCountedObject.h>

namespace zetui::controls {

class UI_MultiColumnTree;

/// The titles above a tree: moved and resized by dragging, sorted by a click, fitted by a double click on a
/// title's right edge. Columns have ids of their own; a cell index (position) is the column's place as the
/// header shows it.
class ZETUI_API UI_MultiColumnTreeHeaderRow : public utility::RefCountedObject
{
  public:
    /// Becomes the tree's header, which holds it.
    explicit UI_MultiColumnTreeHeaderRow(UI_MultiColumnTree* tree);

    void AppendColumn(const std::wstring& title, unsigned id);
    int GetColumnCount() const;
    /// The id of the column at a position; 0 for a position that there is not.
    unsigned GetColumnAt(int position) const;
    std::wstring GetColumnTitle(unsigned id) const;
    /// In pixels; without what the last column takes beyond its own width. Unknown ids: nothing, and 0.
    void SetColumnWidth(unsigned id, float width);
    float GetColumnWidth(unsigned id) const;
    /// The last column, as the header shows them, is at least as wide as it was made, and takes what the
    /// others leave free. Off unless it is called.
    void SetLastColumnTakesFreeWidth(bool takes);
    /// The user can neither drag this column to another place nor another column past it: for columns whose
    /// cells hold controls, which belong to a position. Unknown ids: nothing.
    void SetColumnKeepsPlace(unsigned id, bool keeps);
    /// Moves a column to a position, also one that keeps its place when it is dragged.
    void MoveColumn(unsigned id, int position);

    /// 0: unsorted (fill order). Sorting happens with `UI_MultiColumnTree::SortTree`, and at once after a
    /// click.
    void SetSortColumn(unsigned id);
    unsigned GetSortColumn() const;
    void SetSortDirection(bool ascending);
    bool IsSortDirectionAscending() const;

    /// Asked on a double click on the title's right edge.
    void SetColumnBestFitWidthCallback(std::function<float(unsigned id)> callback);

  protected:
    ~UI_MultiColumnTreeHeaderRow() override;

  private:
    friend struct TreeAccess;
    UI_MultiColumnTree* tree;
};

} // namespace zetui::controls
