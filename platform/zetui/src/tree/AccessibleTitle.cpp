#include "tree/AccessibleTitle.h"

#include "pixmill/LocalizedText.h"
#include "tree/TreeHeader.h"
#include "tree/TreeState.h"

namespace zetui::controls {

AccessibleTitle::AccessibleTitle(AccessibleTree& accessibleTable, int titleColumn)
    : table(accessibleTable), column(titleColumn)
{}

AccessibleTitle::~AccessibleTitle() = default;

bool AccessibleTitle::isValid() const
{
    return column < table.columnCount();
}

TreeHeader& AccessibleTitle::Header() const
{
    return static_cast<TreeHeader&>(*table.View().horizontalHeader());
}

QWindow* AccessibleTitle::window() const
{
    return table.window();
}

void* AccessibleTitle::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
}

QAccessibleInterface* AccessibleTitle::parent() const
{
    return &table;
}

QString AccessibleTitle::SortText() const
{
    const UI_MultiColumnTree::TreeState& tree = *table.State();
    if (tree.sortColumn == 0 || tree.model.ColumnOfId(tree.sortColumn) != column)
        return {};
    return pixmill::LocalizedText(tree.sortAscending ? "$$$/zetui/Tree/SortedUp=sorted, ascending"
                                                     : "$$$/zetui/Tree/SortedDown=sorted, descending");
}

QString AccessibleTitle::text(QAccessible::Text kind) const
{
    if (!isValid())
        return {};
    if (kind == QAccessible::Name)
        return table.columnDescription(table.State()->PositionOfColumn(column));
    return kind == QAccessible::Description ? SortText() : QString();
}

QRect AccessibleTitle::rect() const
{
    if (!isValid())
        return {};
    const TreeHeader& header = Header();
    const QRect section(header.sectionViewportPosition(column), 0, header.sectionSize(column),
                        header.height());
    return {header.mapToGlobal(section.topLeft()), section.size()};
}

QAccessible::State AccessibleTitle::state() const
{
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    const TreeHeader& header = Header();
    state.disabled = !header.isEnabled();
    state.invisible = !header.isVisible();
    state.offscreen = !QRect(header.mapToGlobal(QPoint()), header.size()).intersects(rect());
    state.focusable = header.CanHaveFocus();
    state.focused = header.hasFocus() && header.FramedColumn() == column;
    return state;
}

QStringList AccessibleTitle::actionNames() const
{
    return isValid() && Header().isEnabled() ? QStringList(pressAction()) : QStringList();
}

QString AccessibleTitle::localizedActionDescription(const QString& name) const
{
    return name == pressAction()
               ? pixmill::LocalizedText("$$$/zetui/Tree/SortByColumn=Sorts the list by this column")
               : QString();
}

void AccessibleTitle::doAction(const QString& name)
{
    if (actionNames().contains(name))
        Header().Sort(column);
}

AccessibleTitles::AccessibleTitles(QWidget& header) : AccessibleNode(&header, QAccessible::Grouping) {}

AccessibleTitles::~AccessibleTitles() = default;

AccessibleTree* AccessibleTitles::Table() const
{
    return AccessibleTree::Of(static_cast<TreeView*>(widget()->parentWidget()));
}

int AccessibleTitles::childCount() const
{
    const AccessibleTree* const table = Table();
    return table ? table->columnCount() : 0;
}

QAccessibleInterface* AccessibleTitles::child(int position) const
{
    const AccessibleTree* const table = Table();
    return table && table->State() ? table->TitleOf(table->State()->ColumnAtPosition(position)) : nullptr;
}

int AccessibleTitles::indexOfChild(const QAccessibleInterface* child) const
{
    const AccessibleTree* const table = Table();
    return table ? table->indexOfChild(child) : -1;
}

} // namespace zetui::controls
