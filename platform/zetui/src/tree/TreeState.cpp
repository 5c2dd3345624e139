#include "tree/TreeState.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include <QAbstractButton>
#include <QHeaderView>
#include <QScrollBar>

#include <zetcore/utility/NullPtrException.h>

#include "application/HandlerErrors.h"
#include "pixmill/QtConversions.h"

namespace zetui::controls {

using TreeState = UI_MultiColumnTree::TreeState;

TreeState::TreeState(UI_MultiColumnTree& stateOwner, TreeView& treeView, unsigned columns, float height)
    : owner(stateOwner), view(&treeView),
      model([this](int place, int column, int role) { return CellData(place, column, role); }), cells(*this),
      keyboard(*this), rowHeight(height)
{
    later.setSingleShot(true);
    later.setInterval(0);
    QObject::connect(&later, &QTimer::timeout, &later, [this] { ui::CallFromToolkit([this] { Flush(); }); });
    ResetColumns(columns);
    treeView.SetTree(this);
    ApplySelectionOptions();
    QObject::connect(treeView.selectionModel(), &QItemSelectionModel::selectionChanged, &later,
                     [this] { TellOfSelection(); });
}

TreeState::~TreeState()
{
    cells.Clear();
    for (const RowPtr& row : rows)
        TreeAccess::Detach(*row);
    if (header)
        TreeAccess::ForgetTree(*header);
    if (view)
        view->SetTree(nullptr);
    if (foot)
        foot->SetNotice({}, {}, {});
}

void TreeState::RemoveAllRows()
{
    if (rows.empty())
        return;
    const SelectionChange change(*this);
    if (view && !model.Shown().empty())
        keptScroll = view->verticalScrollBar()->value();
    cells.Clear();
    // The rows are kept until the model has let them go. A row that somebody else holds has no tree from now
    // on.
    const std::vector<RowPtr> removed = std::exchange(rows, {});
    for (const RowPtr& row : removed)
        TreeAccess::Detach(*row);
    // A row that comes later may have the address of one that was selected.
    if (!toldRows.empty())
        toldRows.assign(1, nullptr);
    toldCellRow = nullptr;
    selectedCell = -1;
    keyboard.SetAnchor(-1);
    rowsPending = sortPending = false;
    model.Show({});
    if (deferred == 0)
        DescribeEmptiness();
}

void TreeState::Append(const RowPtr& row, bool sortLater)
{
    if (!row)
        zetcore::utility::DoThrowNullPtrException("UI_MultiColumnTreeRow");
    if (TreeAccess::FillIndexOf(*row) >= 0)
        throw std::invalid_argument("The row is in a tree already");
    TreeAccess::Attach(*row, &owner, static_cast<int>(rows.size()));
    rows.push_back(row);
    rowsPending = true;
    if (!sortLater || deferred > 0)
        sortPending = true;
    if (deferred == 0 && !later.isActive())
        later.start();
}

void TreeState::EndDeferred()
{
    if (--deferred == 0) {
        Flush();
        DescribeEmptiness();
        TellOfSelection();
    }
}

void TreeState::Flush()
{
    if (deferred > 0 || flushing)
        return;
    if (rowsPending || sortPending)
        Show(RowsToShow());
    if (visibilityPending)
        UpdateVisibleRows(false);
}

/// Replaces the rows that the view shows, and hides from the user that it did.
///
/// The model is reset, because moving 100,000 rows one by one would take seconds. A reset makes the view
/// forget its selection, its current cell and its scroll position. So these are read before it, by row and
/// not by place, and put back after it at the places where the rows are now. Neighbours become one range,
/// since a selection of many single rows is slow. Rows that are gone are in no list of rows, and drop out.
///
/// Meanwhile `flushing` keeps what the view tells in between from starting another layout, and
/// `SelectionChange` keeps it from being told: in the end the callback hears of a change only if there is
/// one. Which rows are in sight is asked last, when the view has been laid out.
void TreeState::Show(std::vector<UI_MultiColumnTreeRow*> next)
{
    const SelectionChange change(*this);
    flushing = true;
    const std::vector<RowPtr> selected = SelectedRows();
    const QModelIndex current = view ? view->currentIndex() : QModelIndex();
    const UI_MultiColumnTreeRow* const currentRow = model.RowAt(current.row());
    const int column = current.column();
    const int scroll = keptScroll.value_or(view ? view->verticalScrollBar()->value() : 0);
    keptScroll.reset();

    model.Show(std::move(next));

    if (view) {
        QItemSelection selection;
        const int lastColumn = model.columnCount() - 1;
        for (std::size_t i = 0; i < selected.size() && lastColumn >= 0;) {
            const int top = model.PlaceOf(selected[i].get());
            int bottom = top;
            while (++i < selected.size() && model.PlaceOf(selected[i].get()) == bottom + 1)
                ++bottom;
            selection.append(QItemSelectionRange(model.index(top, 0), model.index(bottom, lastColumn)));
        }
        view->selectionModel()->select(selection, QItemSelectionModel::Select | QItemSelectionModel::Rows);
        if (currentRow)
            view->selectionModel()->setCurrentIndex(model.index(model.PlaceOf(currentRow), column),
                                                    QItemSelectionModel::NoUpdate);
        view->LayOut();
        view->verticalScrollBar()->setValue(scroll);
    }
    flushing = false;
    DescribeEmptiness();
    UpdateVisibleRows(false);
}

std::vector<UI_MultiColumnTree::RowPtr> TreeState::RowsInSight() const
{
    std::vector<RowPtr> sight;
    if (!view || !view->isVisible())
        return sight;
    const auto [first, last] = view->PlacesInSight();
    for (int place = first; place <= last; ++place)
        sight.push_back(Hold(model.RowAt(place)));
    return sight;
}

void TreeState::UpdateVisibleRows(bool renewCells)
{
    renewPending = renewPending || renewCells;
    if (deferred > 0 || flushing || updatingVisibleRows) {
        visibilityPending = true;
        return;
    }
    visibilityPending = false;
    updatingVisibleRows = true;
    const bool renew = std::exchange(renewPending, false);
    cells.SetVisible(
        RowsInSight(),
        [this](const RowPtr& row) {
            if (rowVisibilityChanged)
                ui::CallFromToolkit([&] { rowVisibilityChanged(row); });
        },
        renew);
    updatingVisibleRows = false;
    if (visibilityPending && !later.isActive())
        later.start();
}

void TreeState::UpdateVisibleRowsLater()
{
    visibilityPending = renewPending = true;
    if (deferred == 0 && !later.isActive())
        later.start();
}

void TreeState::ScrollToTop()
{
    keptScroll = rowsPending || sortPending ? std::optional<int>(0) : std::nullopt;
    if (view)
        view->verticalScrollBar()->setValue(0);
}

void TreeState::SetEmptyText(const std::wstring& text)
{
    emptyText = text;
    if (deferred == 0)
        DescribeEmptiness();
    if (view && rows.empty())
        view->viewport()->update();
}

/// Screen readers read it as the list's description.
void TreeState::DescribeEmptiness() const
{
    if (view)
        view->setAccessibleDescription(rows.empty() ? pixmill::ToQString(emptyText) : QString());
}

UI_MultiColumnTree::RowPtr TreeState::Hold(const UI_MultiColumnTreeRow* row) const
{
    const int index = row && row->GetTree() == &owner ? TreeAccess::FillIndexOf(*row) : -1;
    return index < 0 ? RowPtr() : rows[static_cast<std::size_t>(index)];
}

int TreeState::ColumnAtPosition(int position) const
{
    if (!view || position < 0 || position >= model.columnCount())
        return -1;
    return view->horizontalHeader()->logicalIndex(position);
}

int TreeState::PositionOfColumn(int column) const
{
    return !view || column < 0 ? -1 : view->horizontalHeader()->visualIndex(column);
}

void TreeState::ResetColumns(unsigned count)
{
    std::vector<TreeColumn> columns;
    for (unsigned id = 0; id < count; ++id)
        columns.push_back({id, {}});
    const SelectionChange change(*this);
    rightMargin.reset();
    model.SetColumns(std::move(columns));
    UpdateVisibleRows(true);
}

std::wstring TreeState::CellText(const RowPtr& row, int position) const
{
    const CellSortDataFunction& text = cellText ? cellText : sortData;
    return text && row && position >= 0 ? text(row, position) : std::wstring();
}

std::wstring TreeState::CellTooltip(const RowPtr& row, int position) const
{
    return cellTooltip && row && position >= 0 ? cellTooltip(row, position) : std::wstring();
}

CellControl TreeState::ControlAt(const RowPtr& row, int position) const
{
    using Kind = CellControl::Kind;
    if (const auto* const button = dynamic_cast<QAbstractButton*>(cells.WidgetAt(row.get(), position)))
        return {button->isCheckable() ? Kind::Checkbox : Kind::Button, button->isEnabled(),
                button->isChecked()};
    CellControl control;
    if (cellControl && row && position >= 0 && !cells.IsVisible(row.get()))
        ui::CallFromToolkit([&] { control = cellControl(row, position); });
    return control;
}

int TreeState::NamePosition() const
{
    return PositionOfColumn(model.columnCount() > 1 ? 1 : 0);
}

QVariant TreeState::CellData(int place, int column, int role)
{
    const RowPtr row = Hold(model.RowAt(place));
    const bool wholeRow = column == TreeModel::rowHeaderColumn;
    const int position = wholeRow ? NamePosition() : PositionOfColumn(column);
    QVariant data;
    ui::CallFromToolkit([&] {
        if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole) {
            data = pixmill::ToQString(CellText(row, position));
        } else if (role == Qt::ToolTipRole && !wholeRow) {
            if (const std::wstring text = TooltipAt(row, position); !text.empty())
                data = pixmill::PlainForTooltip(text);
        } else if (role == Qt::AccessibleDescriptionRole && !wholeRow) {
            if (const std::wstring text = CellTooltip(row, position); !text.empty())
                data = pixmill::ToQString(text);
        }
    });
    return data;
}

} // namespace zetui::controls
