#pragma once

#include "tree/AccessibleTree.h"

class QAbstractButton;

namespace zetui::controls {

/// A cell. It says its column and its value, and works the control that is in it, whether the row is in sight
/// or not. In a row that is in sight, the control is its child.
class AccessibleCell final : public QAccessibleInterface,
                             public QAccessibleTableCellInterface,
                             public QAccessibleActionInterface
{
  public:
    AccessibleCell(AccessibleTree& table, int place, int position);

    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QWindow* window() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    int childCount() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::Cell; }
    QAccessible::State state() const override;

    bool isSelected() const override;
    QList<QAccessibleInterface*> columnHeaderCells() const override;
    /// The cell that names the row.
    QList<QAccessibleInterface*> rowHeaderCells() const override;
    int columnIndex() const override { return position; }
    int rowIndex() const override { return place; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return &list; }

    QStringList actionNames() const override;
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

  private:
    ~AccessibleCell() override;
    UI_MultiColumnTree::TreeState& State() const;
    UI_MultiColumnTree::RowPtr Row() const;
    CellControl Control() const;
    QString Data(int role) const;
    QString Name() const;
    /// The nodes in the cell; none when the row is out of sight.
    utility::IntrusivePtr<ui::UI_SubView> View() const;
    void ClickControl() const;

    AccessibleTree& list;
    int place, position;
};

} // namespace zetui::controls
