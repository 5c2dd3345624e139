#pragma once

#include <functional>
#include <vector>

#include <QAccessible>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <zetui/tree/UI_MultiColumnTree.h>

class QAbstractButton;

namespace zetui::controls {

/// The rows in the visible area, and the views in their cells. Cell views belong to a position, not to a
/// column: the view at position 0 is in the first cell that is shown, of whatever column that is.
class TreeCells : public QObject
{
  public:
    using RowPtr = UI_MultiColumnTree::RowPtr;
    using CellView = utility::IntrusivePtr<ui::UI_SubView>;

    using TreeState = UI_MultiColumnTree::TreeState;

    explicit TreeCells(TreeState& state);
    ~TreeCells() override;

    bool IsVisible(const UI_MultiColumnTreeRow* row) const noexcept;
    std::size_t VisibleCount() const noexcept { return visible.size(); }
    /// Makes these the visible rows, and calls back for each that left and each that came.
    void SetVisible(std::vector<RowPtr> rows, const std::function<void(const RowPtr&)>& changed, bool renew);
    /// Makes no row visible, and calls nobody.
    void Clear();
    /// The view of a cell. It is made when there is none yet and the row is visible. Null for a position that
    /// does not exist.
    CellView ViewAt(UI_MultiColumnTreeRow& row, int position);
    /// The view of a cell. Null where none has been made.
    CellView ShownViewAt(const UI_MultiColumnTreeRow* row, int position) const;
    /// The control in a cell. Null where none has been made.
    QWidget* WidgetAt(const UI_MultiColumnTreeRow* row, int position) const;
    /// Puts the cell views where their cells are.
    void Place();

    /// The controls in a row's cells that can have the focus, from left to right.
    std::vector<QWidget*> ControlsOf(const UI_MultiColumnTreeRow* row) const;
    /// The row and position of the cell that holds the widget. The position is -1 when no cell does.
    std::pair<RowPtr, int> CellOf(const QWidget* widget) const;
    /// True when a control in some cell has the keyboard focus.
    bool HaveFocus() const;
    /// True when the control in this cell has it.
    bool HasFocusIn(const UI_MultiColumnTreeRow* row, int position) const;

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct VisibleRow
    {
        RowPtr row;
        std::vector<CellView> views;
    };
    const VisibleRow* Find(const UI_MultiColumnTreeRow* row) const noexcept;
    void Drop(VisibleRow& left);
    void SelectFocusedRow(const RowPtr& row, int position);
    void Adopt(const UI_MultiColumnTreeRow* row);
    void PlaceView(const VisibleRow& row, int position);
    /// Null when the widget is in no cell.
    QAccessibleInterface* AccessibleCellOf(const QWidget* widget) const;
    void TellOfToggle(const QAbstractButton& box) const;

    TreeState& state;
    std::vector<VisibleRow> visible;
};

} // namespace zetui::controls
