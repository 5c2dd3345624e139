#pragma once

#include "tree/AccessibleTree.h"

namespace zetui::controls {

class TreeHeader;

/// The title of a column. It says how the list is sorted by it, and sorts by it.
class AccessibleTitle final : public QAccessibleInterface, public QAccessibleActionInterface
{
  public:
    AccessibleTitle(AccessibleTree& table, int column);

    int Column() const noexcept { return column; }

    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QWindow* window() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::ColumnHeader; }
    QAccessible::State state() const override;

    QStringList actionNames() const override;
    QString localizedActionDescription(const QString& name) const override;
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

  private:
    ~AccessibleTitle() override;
    TreeHeader& Header() const;
    QString SortText() const;

    AccessibleTree& table;
    int column;
};

/// The widget of the titles, for when it has the focus. The titles themselves are children of the table.
class AccessibleTitles final : public ui::AccessibleNode
{
  public:
    explicit AccessibleTitles(QWidget& header);

    int childCount() const override;
    QAccessibleInterface* child(int position) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;

  private:
    ~AccessibleTitles() override;
    AccessibleTree* Table() const;
};

} // namespace zetui::controls
