#pragma once

#include <map>
#include <utility>

#include <QObject>

#include "nodes/AccessibleNode.h"
#include "tree/TreeView.h"

namespace zetui::controls {

/// A tree as screen readers see it. It is a table, and its columns stand as the user sees them: the index of
/// a column is its position. Its children are the titles, then the cells row by row, then whatever else the
/// list shows. Cells exist for all rows, whether in sight or not.
class AccessibleTree final : public ui::AccessibleNode, public QAccessibleTableInterface
{
  public:
    using TreeState = UI_MultiColumnTree::TreeState;

    explicit AccessibleTree(TreeView& view);

    /// Null for a view that has no tree any more.
    static AccessibleTree* Of(TreeView* view);
    TreeView& View() const;
    /// Null when the tree is gone.
    TreeState* State() const;
    /// The title of a column, by its index in the model. Null for a column that does not exist.
    QAccessibleInterface* TitleOf(int column) const;
    /// The cell that the keyboard is at. Null when there is none.
    QAccessibleInterface* FocusedCell() const;
    int FocusedPlace() const;
    int FocusedPosition() const;

    void* interface_cast(QAccessible::InterfaceType type) override;
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;

    QAccessibleInterface* caption() const override { return nullptr; }
    QAccessibleInterface* summary() const override { return nullptr; }
    QAccessibleInterface* cellAt(int place, int position) const override;
    int selectedCellCount() const override;
    QList<QAccessibleInterface*> selectedCells() const override;
    QString columnDescription(int position) const override;
    QString rowDescription(int place) const override;
    int selectedColumnCount() const override { return 0; }
    int selectedRowCount() const override;
    int columnCount() const override;
    int rowCount() const override;
    QList<int> selectedColumns() const override { return {}; }
    QList<int> selectedRows() const override;
    bool isColumnSelected(int) const override { return false; }
    bool isRowSelected(int place) const override;
    bool selectRow(int place) override;
    bool selectColumn(int) override { return false; }
    bool unselectRow(int place) override;
    bool unselectColumn(int) override { return false; }
    /// The model itself tells of its changes, because Qt does so only while somebody listens.
    void modelChange(QAccessibleTableModelChangeEvent*) override {}

  private:
    ~AccessibleTree() override;
    int TitleCount() const;
    /// The widgets in the list that are neither titles nor cells.
    QList<QWidget*> Others() const;
    void ForgetCells();
    void ForgetTitles();

    /// By place and position, and by column.
    mutable std::map<std::pair<int, int>, QAccessible::Id> cells;
    mutable std::map<int, QAccessible::Id> titles;
    /// The context of the connections to the model.
    QObject connections;
};

/// Lets screen readers see trees like this.
void UseAccessibleTrees();

} // namespace zetui::controls
