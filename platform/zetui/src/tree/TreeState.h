#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <QPointer>
#include <QTimer>

#include <zetui/tree/UI_MultiColumnTree.h>

#include "tree/NaturalOrder.h"
#include "tree/TreeAccess.h"
#include "tree/TreeCells.h"
#include "tree/TreeFoot.h"
#include "tree/TreeKeyboard.h"
#include "tree/TreeModel.h"
#include "tree/TreeView.h"

namespace zetui::controls {

struct TreeOptions
{
    bool indicateFocus = false;
    bool noneSelected = true;
    bool deselectOnEmptyClick = false;
    bool multipleSelections = false;
    bool nonArrowKeysSelect = false;
    bool selectableRows = true;
    bool selectableCells = false;
};

/// The inside of a tree: its rows in fill order, the model and view that show them, and what is still to be
/// done with them. Rows that are appended are "pending" until they are shown. That happens at the end of the
/// deferred layout, at the next question that depends on it, or when control is back in the event loop,
/// whichever comes first. Main thread.
struct UI_MultiColumnTree::TreeState
{
    TreeState(UI_MultiColumnTree& owner, TreeView& view, unsigned columns, float rowHeight);
    ~TreeState();
    TreeState(const TreeState&) = delete;
    TreeState& operator=(const TreeState&) = delete;

    void RemoveAllRows();
    void Append(const RowPtr& row, bool sortLater);
    void RequestSort();
    void ForgetSortedPlaces() noexcept { sortedRows.clear(); }
    void BeginDeferred() noexcept { ++deferred; }
    void EndDeferred();
    /// Does what is pending, unless layout is put off.
    void Flush();
    /// Tells of the rows that came into the visible area and left it. With `renewCells`, all of them leave
    /// and come again, since their cells are no longer what they were.
    void UpdateVisibleRows(bool renewCells);
    /// Does the same when control is back in the event loop, once.
    void UpdateVisibleRowsLater();

    void ScrollToTop();
    /// Shown in the place of rows while there are none.
    void SetEmptyText(const std::wstring& text);
    void SetDetails(std::function<std::wstring(RowPtr)> function, const std::wstring& name,
                    const std::wstring& prompt);
    void SetNotice(const std::wstring& text, const std::wstring& command, std::function<void()> pressed);
    const std::wstring& EmptyText() const noexcept { return emptyText; }

    RowPtr Hold(const UI_MultiColumnTreeRow* row) const;
    int ColumnAtPosition(int position) const;
    int PositionOfColumn(int column) const;
    void ResetColumns(unsigned count);
    /// The text for screen readers and type-ahead.
    std::wstring CellText(const RowPtr& row, int position) const;
    std::wstring CellTooltip(const RowPtr& row, int position) const;
    /// The whole text of a cell that shows a part of it, and the cell's own tooltip.
    std::wstring TooltipAt(const RowPtr& row, int position) const;
    /// The control that is in a cell, or will be when its row comes into sight.
    CellControl ControlAt(const RowPtr& row, int position) const;
    /// The position of the column that names a row.
    int NamePosition() const;

    std::vector<RowPtr> SelectedRows() const;
    int FirstSelectedPlace() const;
    /// Selects or deselects a row beside the others, as far as the options allow.
    void SelectAlso(int place, bool select);
    /// Selects the rows between two places and no other.
    void SelectRange(int from, int to);
    bool IsSelected(int place) const;
    /// Selects the row at this place and no other, and in it the cell at this position. -1 selects no row, or
    /// no cell.
    void SelectOnly(int place, int cell);
    void SetSelectedCell(int cell);
    void DeselectAll();
    void ApplySelectionOptions();
    /// While one of these lives, changes of the selection are gathered. The end of the last one tells of
    /// them.
    class SelectionChange
    {
      public:
        explicit SelectionChange(TreeState& tree);
        ~SelectionChange();
        SelectionChange(const SelectionChange&) = delete;
        SelectionChange& operator=(const SelectionChange&) = delete;

      private:
        TreeState& tree;
    };

    void SortByHeader(int column, bool ascending);
    void ShowSortIndicator();

    UI_MultiColumnTree& owner;
    QPointer<TreeView> view;
    /// Null until there is something to say in it. The node owns it.
    QPointer<TreeFoot> foot;
    TreeOptions options;
    TreeModel model;
    TreeCells cells;
    TreeKeyboard keyboard;
    utility::IntrusivePtr<UI_MultiColumnTreeHeaderRow> header;
    std::vector<RowPtr> rows;
    float rowHeight;
    unsigned sortColumn = 0;
    bool sortAscending = true;
    int selectedCell = -1;
    /// The room that the last column of a tree without header leaves at the right edge.
    std::optional<float> rightMargin;

    DrawCellOfRowCallback drawCell;
    std::function<void()> rowsSelectionChanged;
    RowCallback rowVisibilityChanged;
    std::function<void()> cellSelectionChanged, deletePressed;
    std::function<UI_ContextMenu(RowPtr)> rowMenu;
    CellSortDataFunction sortData, cellText, cellTooltip;
    std::function<std::wstring(RowPtr)> rowDetails;
    std::function<std::wstring(RowPtr, int cellIndex, float cellWidth)> cutText;
    CellControlFunction cellControl;
    std::function<float(unsigned id)> bestFitWidth;

  private:
    void SortByUsualColumn();
    QVariant CellData(int place, int column, int role);
    std::vector<UI_MultiColumnTreeRow*> RowsToShow();
    std::vector<UI_MultiColumnTreeRow*> RowsSorted(int position);
    /// The rows in their known order; empty when it is not known of some row.
    std::vector<UI_MultiColumnTreeRow*> RowsInKnownOrder() const;
    void Show(std::vector<UI_MultiColumnTreeRow*> next);
    void TellOfSelection();
    void DescribeEmptiness() const;
    void UpdateDetails();
    TreeFoot& RequireFoot();
    std::vector<RowPtr> RowsInSight() const;

    int deferred = 0;
    bool rowsPending = false, sortPending = false, visibilityPending = false, renewPending = false;
    bool flushing = false, updatingVisibleRows = false, showsSortIndicator = false;
    /// The scroll position when the rows were removed. The rows that come instead get it.
    std::optional<int> keptScroll;
    int selectionChanges = 0;
    bool selectionChanged = false;
    std::vector<UI_MultiColumnTreeRow*> toldRows;
    const UI_MultiColumnTreeRow* toldCellRow = nullptr;
    int toldCell = -1;
    std::unique_ptr<NaturalOrder> order;
    /// The rows as they were sorted last, and by what. Some may be gone, and only their places tell them from
    /// others.
    std::vector<const UI_MultiColumnTreeRow*> sortedRows;
    struct SortedBy
    {
        unsigned column = 0;
        int position = -1;
        bool ascending = true;
        friend bool operator==(const SortedBy&, const SortedBy&) = default;
    } sortedBy;
    std::wstring emptyText;
    QTimer later;
};

} // namespace zetui::controls
