#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <zetui/Export.h>
#include <zetui/controls/UI_ContextMenu.h>
#include <zetui/controls/UI_ControlView.h>
#include <zetui/pixmill/Pixmill.h>
#include <zetui/tree/UI_MultiColumnTreeHeaderRow.h>
#include <zetui/tree/UI_MultiColumnTreeRow.h>
#include <zetui/utility/IntrusivePtr.h>

namespace zetui::controls {

/// Flags of `UI_MultiColumnTree::Init`; none are needed.
using TreeFlags = unsigned;

/// The control that the row-visibility callback puts into a cell.
struct CellControl
{
    enum class Kind
    {
        Empty,
        Checkbox,
        Button
    };
    Kind kind = Kind::Empty;
    bool enabled = false;
    bool checked = false;
};

/// A list of rows with columns, drawn by callbacks, with controls in its cells. The row-visibility callback
/// makes the controls for visible rows only, so that their cost does not grow with the number of rows. Rows
/// that are appended without a deferred-layout guard are shown when control is back in the event loop, or
/// when somebody asks for their place. The modal run that is going on throws the exceptions of callbacks
/// again. Main thread. Arrows, Page Up and Down, Home and End select rows; Left and Right select cells, where
/// cells may be selected. Typed letters lead to the next row whose text in the second (or only) column begins
/// with them. Tab moves through the controls in the selected row and then leaves the list. Space presses the
/// first control of the row that has the focus frame and selects the row; a control that is disabled is
/// passed over.
class ZETUI_API UI_MultiColumnTree : public UI_ControlView
{
  public:
    using RowPtr = utility::IntrusivePtr<UI_MultiColumnTreeRow>;
    using RectF = zetcore::geom::RectT<float>;
    using DrawCellOfRowCallback = std::function<void(pixmill::Pixmill*, RowPtr, int cellIndex, RectF)>;
    using RowCallback = std::function<void(RowPtr)>;
    using CellSortDataFunction = std::function<std::wstring(RowPtr, int cellIndex)>;
    using CellControlFunction = std::function<CellControl(RowPtr, int cellIndex)>;

    UI_MultiColumnTree(unsigned columns, float rowHeight);

    void Init(TreeFlags flags);
    static float GetDefaultRowHeight();
    /// Above and below a cell's text, and left and right of it.
    static std::pair<float, float> GetDefaultCellPadding();
    float GetRowHeight() const;

    void SetAllowChildren(bool allow);
    void SetIndicateFocus(bool indicate);
    void SetSupportNoneSelected(bool support);
    void SetSupportDeselectAllOnEmptyTreeClick(bool support);
    void SetSupportMultipleSelections(bool support);
    void SetWantsKeyboardFocus(bool wants) override;
    /// Space selects the current row where it has no control to press.
    void SetSupportNonArrowKeysToSelectRow(bool support);
    void SetSupportUserSelectableRows(bool support);
    void SetSupportUserSelectableCells(bool support);
    /// Sets the columns of a tree without header. They get the ids 0, 1 and so on.
    void SetNumberOfColumns(int count);
    void SetColumnWidth(int column, float width);
    float GetContentViewWidth() const;
    /// Null for a tree without header.
    UI_MultiColumnTreeHeaderRow* GetHeaderRow() const;

    void SetDrawCellOfRowCallback(DrawCellOfRowCallback callback);
    void SetRowsSelectionChangedCallback(std::function<void()> callback);
    /// A row came into the visible area or left it (`IsRowVisible` tells which). Also called after a sort or
    /// a fill, when the layout is done. When columns are moved or resized, the visible rows leave and come
    /// again with new cell views. Nothing is visible before the window is shown.
    void SetRowVisibilityChangedCallback(RowCallback callback);
    void SetCellSelectionChangedCallback(std::function<void()> callback);
    /// The text by which a cell is sorted. Texts are compared as people expect: letters by the user's locale,
    /// without regard to case, and numbers by value. Equal ones keep their fill order.
    void SetCellSortDataFunction(CellSortDataFunction function);
    /// The text of a cell for screen readers and type-ahead. Unless it is set, they get the sort data.
    void SetCellTextFunction(CellSortDataFunction function);
    /// The tooltip of a cell. An empty text shows no tooltip.
    void SetCellTooltipFunction(CellSortDataFunction function);
    /// The whole text of a cell that is so wide and shows only a part of it; empty when it shows all. It
    /// comes into the tooltip before the cell's own.
    void SetCutTextFunction(std::function<std::wstring(RowPtr, int cellIndex, float cellWidth)> function);

    /// The foot of the list, which takes its room from the list's own. It says more about the row that is
    /// selected, or the first of several: the text may have several lines, and the user can select, copy and
    /// scroll it. `name` is the text's name for screen readers, and `prompt` stands there while there is no
    /// text. A null function takes the text away. The function is asked when the selection has changed and
    /// when rows have been filled in.
    void SetRowDetailsFunction(std::function<std::wstring(RowPtr)> function, const std::wstring& name = {},
                               const std::wstring& prompt = {});
    /// A notice about the list, at its foot, with a button that calls `pressed`. An empty text takes it away.
    void SetNotice(const std::wstring& text, const std::wstring& command = {},
                   std::function<void()> pressed = {});

    /// Tells of the controls of rows that are out of sight. They do not exist, but a screen reader finds them
    /// in their cells all the same, and works them.
    void SetCellControlFunction(CellControlFunction function);
    /// Gives the context menu of a row, which the right mouse button opens at the pointer, and the Menu key
    /// and Shift+F10 at the row with the focus frame. The row is selected then.
    void SetRowMenuFunction(std::function<UI_ContextMenu(RowPtr)> function);
    /// Called for the Delete key while rows are selected.
    void SetDeleteCallback(std::function<void()> callback);

    /// While the list has no rows, this text says in its middle why. It is no row.
    void SetEmptyText(const std::wstring& text);

    /// The callback hears of a selection that goes with the rows, but not that visible rows are gone.
    void RemoveAllRows();
    /// Appends a row in fill order. Rows have no parents here, so `parent` must be null. With `sortLater`,
    /// the row's place is found by the next `SortTree` or at the end of the deferred layout.
    void AppendRow(const RowPtr& row, UI_MultiColumnTreeRow* parent, bool sortLater);
    RowPtr CreateAndAppendRow();
    /// Sorts by the header's sort column. A header that has none yet sorts by the column that names the rows,
    /// ascending, from now on. Without a header, rows stand in fill order.
    void SortTree();
    /// Says that the sort data of some row has changed. Until somebody says so, or sorts, or sets another
    /// column, direction or function, rows that have been sorted keep their order when they are removed and
    /// appended again, and nobody is asked for their data.
    void ForgetSortedPlaces();
    int GetRowCount() const;
    /// The row at this place, counted from the top as shown.
    RowPtr GetRowAt(int place) const;
    /// The place of a row as shown; -1 for a row that is not in the list.
    int GetPlaceOfRow(const UI_MultiColumnTreeRow* row) const;
    bool IsRowVisible(const UI_MultiColumnTreeRow* row) const;
    void ScrollToTop(bool redraw);
    void ScrollToRow(const UI_MultiColumnTreeRow* row);

    std::vector<RowPtr> GetSelectedRows() const;
    bool IsAnyRowSelected() const;
    void SelectRow(const UI_MultiColumnTreeRow* row, bool select);
    void DeselectAll();
    /// The position of the selected cell in the selected row, -1 when none is selected.
    int GetSelectedCellOfSelectedRow() const;
    void SelectCell(const UI_MultiColumnTreeRow* row, int position);

    /// Gives the list the keyboard focus, with the selected row in sight. Where no row is selected, the first
    /// one in sight is. Without rows it does nothing, and the answer is false.
    bool EnterRows();

    bool UI_DoKeyboardEvent(ui::UI_Node* target, const ui::KeyboardEvent& event) override;

    struct TreeState;

  protected:
    ~UI_MultiColumnTree() override;

  private:
    friend struct TreeAccess;
    std::unique_ptr<TreeState> tree;
};

/// Puts off layout, sorting and drawing while rows are added and removed; does them once when the last guard
/// of a tree ends.
class ZETUI_API ScDeferLayoutForOpenAndCloseRow
{
  public:
    explicit ScDeferLayoutForOpenAndCloseRow(UI_MultiColumnTree* tree);
    ~ScDeferLayoutForOpenAndCloseRow();
    ScDeferLayoutForOpenAndCloseRow(const ScDeferLayoutForOpenAndCloseRow&) = delete;
    ScDeferLayoutForOpenAndCloseRow& operator=(const ScDeferLayoutForOpenAndCloseRow&) = delete;

  private:
    utility::IntrusivePtr<UI_MultiColumnTree> tree;
};

} // namespace zetui::controls
