#include "tree/AccessibleTree.h"

#include <algorithm>
#include <utility>

#include <QHeaderView>
#include <QScrollBar>

#include "application/AccessibleFactories.h"
#include "tree/AccessibleCell.h"
#include "tree/AccessibleTitle.h"
#include "tree/TreeHeader.h"
#include "tree/TreeState.h"

namespace zetui::controls {

AccessibleTree::AccessibleTree(TreeView& view) : AccessibleNode(&view, QAccessible::Table)
{
    const QAbstractItemModel* const model = view.model();
    if (!model)
        return;
    QObject::connect(model, &QAbstractItemModel::modelReset, &connections, [this] {
        ForgetCells();
        if (static_cast<int>(titles.size()) > TitleCount())
            ForgetTitles();
    });
    QObject::connect(model, &QAbstractItemModel::columnsInserted, &connections, [this] { ForgetCells(); });
    QObject::connect(view.horizontalHeader(), &QHeaderView::sectionMoved, &connections,
                     [this] { ForgetCells(); });
}

AccessibleTree::~AccessibleTree()
{
    ForgetCells();
    ForgetTitles();
}

AccessibleTree* AccessibleTree::Of(TreeView* view)
{
    return dynamic_cast<AccessibleTree*>(view ? QAccessible::queryAccessibleInterface(view) : nullptr);
}

void AccessibleTree::ForgetCells()
{
    for (const auto& cell : std::exchange(cells, {}))
        QAccessible::deleteAccessibleInterface(cell.second);
}

void AccessibleTree::ForgetTitles()
{
    for (const auto& title : std::exchange(titles, {}))
        QAccessible::deleteAccessibleInterface(title.second);
}

TreeView& AccessibleTree::View() const
{
    return static_cast<TreeView&>(*widget());
}

AccessibleTree::TreeState* AccessibleTree::State() const
{
    return isValid() ? View().Tree() : nullptr;
}

void* AccessibleTree::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TableInterface)
        return static_cast<QAccessibleTableInterface*>(this);
    return AccessibleNode::interface_cast(type);
}

int AccessibleTree::TitleCount() const
{
    return State() && !View().horizontalHeader()->isHidden() ? columnCount() : 0;
}

QList<QWidget*> AccessibleTree::Others() const
{
    QList<QWidget*> others;
    for (QWidget* const child : View().findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        const bool scrolls = child->findChild<QScrollBar*>(QString(), Qt::FindDirectChildrenOnly);
        const bool known = child == View().viewport() || dynamic_cast<QHeaderView*>(child) || scrolls;
        if (!known && !child->isWindow() && !child->isHidden())
            others.append(child);
    }
    return others;
}

int AccessibleTree::childCount() const
{
    return TitleCount() + rowCount() * columnCount() + static_cast<int>(Others().size());
}

QAccessibleInterface* AccessibleTree::child(int index) const
{
    const int titleCount = TitleCount();
    if (index < 0 || !State())
        return nullptr;
    if (index < titleCount)
        return TitleOf(State()->ColumnAtPosition(index));
    const int cell = index - titleCount;
    if (columnCount() > 0 && cell < rowCount() * columnCount())
        return cellAt(cell / columnCount(), cell % columnCount());
    const QList<QWidget*> others = Others();
    const int other = cell - rowCount() * columnCount();
    return other < others.size() ? QAccessible::queryAccessibleInterface(others[other]) : nullptr;
}

int AccessibleTree::indexOfChild(const QAccessibleInterface* child) const
{
    if (!State() || !child)
        return -1;
    if (const auto* const title = dynamic_cast<const AccessibleTitle*>(child))
        return State()->PositionOfColumn(title->Column());
    if (const auto* const cell = dynamic_cast<const AccessibleCell*>(child))
        return TitleCount() + cell->rowIndex() * columnCount() + cell->columnIndex();
    const auto other = Others().indexOf(qobject_cast<QWidget*>(child->object()));
    return other < 0 ? -1 : TitleCount() + rowCount() * columnCount() + static_cast<int>(other);
}

QAccessibleInterface* AccessibleTree::childAt(int x, int y) const
{
    if (!State())
        return nullptr;
    for (QWidget* const other : Others()) {
        if (other->rect().contains(other->mapFromGlobal(QPoint(x, y))))
            return QAccessible::queryAccessibleInterface(other);
    }
    const QHeaderView& header = *View().horizontalHeader();
    const QPoint inHeader = header.mapFromGlobal(QPoint(x, y));
    if (TitleCount() > 0 && header.rect().contains(inHeader))
        return TitleOf(header.logicalIndexAt(inHeader));
    const QPoint inView = View().viewport()->mapFromGlobal(QPoint(x, y));
    const QModelIndex index =
        View().viewport()->rect().contains(inView) ? View().indexAt(inView) : QModelIndex();
    return index.isValid() ? cellAt(index.row(), State()->PositionOfColumn(index.column())) : nullptr;
}

QAccessibleInterface* AccessibleTree::focusChild() const
{
    if (State() && View().hasFocus())
        return FocusedCell();
    return AccessibleNode::focusChild();
}

int AccessibleTree::FocusedPlace() const
{
    TreeState* const state = State();
    if (!state)
        return -1;
    const int current = View().currentIndex().row();
    return state->IsSelected(current) ? current : state->FirstSelectedPlace();
}

int AccessibleTree::FocusedPosition() const
{
    return State() ? std::max(0, State()->selectedCell) : 0;
}

QAccessibleInterface* AccessibleTree::FocusedCell() const
{
    return cellAt(FocusedPlace(), FocusedPosition());
}

QAccessibleInterface* AccessibleTree::TitleOf(int column) const
{
    if (column < 0 || column >= columnCount())
        return nullptr;
    const auto found = titles.find(column);
    if (found != titles.end())
        return QAccessible::accessibleInterface(found->second);
    auto* const title = new AccessibleTitle(const_cast<AccessibleTree&>(*this), column);
    titles[column] = QAccessible::registerAccessibleInterface(title);
    return title;
}

QAccessibleInterface* AccessibleTree::cellAt(int place, int position) const
{
    if (place < 0 || place >= rowCount() || position < 0 || position >= columnCount())
        return nullptr;
    const auto found = cells.find({place, position});
    if (found != cells.end())
        return QAccessible::accessibleInterface(found->second);
    auto* const cell = new AccessibleCell(const_cast<AccessibleTree&>(*this), place, position);
    cells[{place, position}] = QAccessible::registerAccessibleInterface(cell);
    return cell;
}

QString AccessibleTree::columnDescription(int position) const
{
    return State()
               ? State()
                     ->model.headerData(State()->ColumnAtPosition(position), Qt::Horizontal, Qt::DisplayRole)
                     .toString()
               : QString();
}

QString AccessibleTree::rowDescription(int place) const
{
    return State() ? State()->model.headerData(place, Qt::Vertical, Qt::DisplayRole).toString() : QString();
}

int AccessibleTree::columnCount() const
{
    return State() ? State()->model.columnCount() : 0;
}

int AccessibleTree::rowCount() const
{
    return State() ? State()->model.rowCount() : 0;
}

QList<int> AccessibleTree::selectedRows() const
{
    QList<int> places;
    if (const TreeState* const state = State()) {
        for (const UI_MultiColumnTree::RowPtr& row : state->SelectedRows())
            places.append(state->model.PlaceOf(row.get()));
    }
    return places;
}

int AccessibleTree::selectedRowCount() const
{
    return static_cast<int>(selectedRows().size());
}

int AccessibleTree::selectedCellCount() const
{
    return selectedRowCount() * columnCount();
}

QList<QAccessibleInterface*> AccessibleTree::selectedCells() const
{
    QList<QAccessibleInterface*> selected;
    for (const int place : selectedRows()) {
        for (int position = 0; position < columnCount(); ++position)
            selected.append(cellAt(place, position));
    }
    return selected;
}

bool AccessibleTree::isRowSelected(int place) const
{
    return State() && State()->IsSelected(place);
}

bool AccessibleTree::selectRow(int place)
{
    TreeState* const state = State();
    if (!state || !state->model.IsSelectable(place))
        return false;
    View().ShowPlace(place);
    state->SelectAlso(place, true);
    return true;
}

bool AccessibleTree::unselectRow(int place)
{
    TreeState* const state = State();
    if (!state || !state->IsSelected(place) ||
        (!state->options.noneSelected && state->SelectedRows().size() == 1))
        return false;
    if (state->options.multipleSelections)
        state->SelectAlso(place, false);
    else
        state->DeselectAll();
    return true;
}

void UseAccessibleTrees()
{
    ui::UseAccessibleFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
        if (auto* const view = dynamic_cast<TreeView*>(object))
            return new AccessibleTree(*view);
        auto* const header = dynamic_cast<TreeHeader*>(object);
        return header && dynamic_cast<TreeView*>(header->parentWidget()) ? new AccessibleTitles(*header)
                                                                         : nullptr;
    });
}

} // namespace zetui::controls
