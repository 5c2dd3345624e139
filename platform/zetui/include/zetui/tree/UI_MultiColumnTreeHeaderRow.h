#pragma once

#include <functional>
#include <string>
#include <vector>

#include <zetui/Export.h>
#include <zetui/utility/RefCountedObject.h>

namespace zetui::controls {

class UI_MultiColumnTree;

/// The titles above a tree. Dragging moves and resizes columns, a click sorts by one, and a double click on a
/// title's right edge fits it. Columns have ids of their own. A cell index (position) is the column's place
/// as the header shows it.
class ZETUI_API UI_MultiColumnTreeHeaderRow : public utility::RefCountedObject
{
  public:
    /// The row becomes the tree's header, and the tree holds it.
    explicit UI_MultiColumnTreeHeaderRow(UI_MultiColumnTree* tree);

    void AppendColumn(const std::wstring& title, unsigned id);
    int GetColumnCount() const;
    /// The id of the column at a position; 0 for a position that there is not.
    unsigned GetColumnAt(int position) const;
    std::wstring GetColumnTitle(unsigned id) const;
    /// The width in pixels, without what the last column takes beyond its own width. For an unknown id,
    /// setting does nothing and the width is 0.
    void SetColumnWidth(unsigned id, float width);
    float GetColumnWidth(unsigned id) const;
    /// Gives a column a width that fits its texts and counts the padding beside them once. The column is
    /// shown with the other padding, too, so that no text is cut.
    void FitColumn(unsigned id, float width);
    /// The last column, as the header shows them, is at least as wide as it was made, and takes what the
    /// others leave free. Off unless it is called.
    void SetLastColumnTakesFreeWidth(bool takes);
    /// When the columns have no room together, this one is shown narrower than its width, but not narrower
    /// than `least`, and a column that is so wide that it would push the others away is shown narrower, too.
    /// The user's own widths stay. Widths that are set and asked for are those with enough room.
    void SetColumnGivesWay(unsigned id, float least);
    /// The user can neither drag this column to another place nor another column past it. Columns with
    /// controls in their cells need it, because the controls belong to a position. An unknown id does
    /// nothing.
    void SetColumnKeepsPlace(unsigned id, bool keeps);
    /// Moves a column to a position, even a column that the user cannot drag.
    void MoveColumn(unsigned id, int position);
    /// The ids of the columns as the header shows them.
    std::vector<unsigned> GetColumnOrder() const;
    /// Shows the columns in this order. False, and nothing changes, when these are not the ids of all
    /// columns, or when a column that keeps its place would leave it.
    bool SetColumnOrder(const std::vector<unsigned>& ids);

    /// The id 0 means that no column is chosen yet. Rows are sorted by `UI_MultiColumnTree::SortTree`, and
    /// at once after a click.
    void SetSortColumn(unsigned id);
    unsigned GetSortColumn() const;
    void SetSortDirection(bool ascending);
    bool IsSortDirectionAscending() const;

    /// Called on a double click on the title's right edge. The column is then fitted
    /// (`FitColumn`).
    void SetColumnBestFitWidthCallback(std::function<float(unsigned id)> callback);

  protected:
    ~UI_MultiColumnTreeHeaderRow() override;

  private:
    friend struct TreeAccess;
    UI_MultiColumnTree* tree;
};

} // namespace zetui::controls
