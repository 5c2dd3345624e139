#include <algorithm>

#include "application/HandlerErrors.h"
#include "tree/TreeState.h"

namespace zetui::controls {

using TreeState = UI_MultiColumnTree::TreeState;

namespace {

constexpr auto wholeRows = QItemSelectionModel::Rows;

} // namespace

TreeState::SelectionChange::SelectionChange(TreeState& changed) : tree(changed)
{
    ++tree.selectionChanges;
}

TreeState::SelectionChange::~SelectionChange()
{
    --tree.selectionChanges;
    tree.TellOfSelection();
}

std::vector<UI_MultiColumnTree::RowPtr> TreeState::SelectedRows() const
{
    std::vector<RowPtr> selected;
    if (!view || !view->selectionModel())
        return selected;
    std::vector<bool> seen(model.Shown().size());
    for (const QItemSelectionRange& range : view->selectionModel()->selection()) {
        for (int place = range.top(); place <= range.bottom(); ++place) {
            const auto at = static_cast<std::size_t>(place);
            if (!seen[at] && model.IsSelectable(place))
                selected.push_back(Hold(model.RowAt(place)));
            seen[at] = true;
        }
    }
    return selected;
}

int TreeState::FirstSelectedPlace() const
{
    if (!view || !view->selectionModel())
        return -1;
    for (const QItemSelectionRange& range : view->selectionModel()->selection()) {
        for (int place = range.top(); place <= range.bottom(); ++place) {
            if (model.IsSelectable(place))
                return place;
        }
    }
    return -1;
}

bool TreeState::IsSelected(int place) const
{
    return view && model.IsSelectable(place) && view->selectionModel()->isSelected(model.index(place, 0));
}

void TreeState::SelectAlso(int place, bool select)
{
    if (!view || !model.IsSelectable(place))
        return;
    if (select && !options.multipleSelections) {
        SelectOnly(place, selectedCell);
        return;
    }
    const SelectionChange change(*this);
    const QModelIndex index = model.index(place, 0);
    view->selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    view->selectionModel()->select(
        index, wholeRows | (select ? QItemSelectionModel::Select : QItemSelectionModel::Deselect));
}

void TreeState::SelectRange(int from, int to)
{
    if (!view || !options.selectableRows)
        return;
    const SelectionChange change(*this);
    const QItemSelection range(model.index(std::min(from, to), 0),
                               model.index(std::max(from, to), model.columnCount() - 1));
    view->selectionModel()->setCurrentIndex(model.index(to, 0), QItemSelectionModel::NoUpdate);
    view->selectionModel()->select(range, wholeRows | QItemSelectionModel::ClearAndSelect);
}

void TreeState::SelectOnly(int place, int cell)
{
    const SelectionChange change(*this);
    if (place < 0) {
        DeselectAll();
        return;
    }
    if (!view || !model.IsSelectable(place))
        return;
    selectedCell = options.selectableCells ? cell : -1;
    const QModelIndex index = model.index(place, std::max(0, ColumnAtPosition(selectedCell)));
    view->selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    view->selectionModel()->select(index, wholeRows | QItemSelectionModel::ClearAndSelect);
}

void TreeState::SetSelectedCell(int cell)
{
    const int place = FirstSelectedPlace();
    if (!view || !options.selectableCells || place < 0)
        return;
    const SelectionChange change(*this);
    selectedCell = cell;
    view->selectionModel()->setCurrentIndex(model.index(place, std::max(0, ColumnAtPosition(cell))),
                                            QItemSelectionModel::NoUpdate);
    view->viewport()->update();
}

void TreeState::DeselectAll()
{
    const SelectionChange change(*this);
    selectedCell = -1;
    if (view)
        view->selectionModel()->clearSelection();
}

void TreeState::ApplySelectionOptions()
{
    if (!view)
        return;
    const SelectionChange change(*this);
    model.SetRowsSelectable(options.selectableRows);
    view->setSelectionMode(!options.selectableRows      ? QAbstractItemView::NoSelection
                           : options.multipleSelections ? QAbstractItemView::ExtendedSelection
                                                        : QAbstractItemView::SingleSelection);
    if (!options.selectableRows)
        DeselectAll();
    else if (const std::vector<RowPtr> selected = SelectedRows();
             !options.multipleSelections && selected.size() > 1)
        SelectOnly(model.PlaceOf(selected.front().get()), selectedCell);
    if (!options.selectableCells)
        selectedCell = -1;
}

void TreeState::TellOfSelection()
{
    if (selectionChanges > 0 || deferred > 0)
        return;
    std::vector<UI_MultiColumnTreeRow*> selected;
    for (const RowPtr& row : SelectedRows())
        selected.push_back(row.get());
    const UI_MultiColumnTreeRow* const cellRow = selected.empty() ? nullptr : selected.front();
    std::sort(selected.begin(), selected.end());
    if (selected.empty())
        selectedCell = -1;
    const bool rowsChanged = selected != toldRows;
    const bool cellChanged = selectedCell != toldCell || (selectedCell >= 0 && cellRow != toldCellRow);
    toldRows = std::move(selected);
    toldCellRow = selectedCell >= 0 ? cellRow : nullptr;
    toldCell = selectedCell;
    // The control of another cell must not keep the keys.
    if ((rowsChanged || cellChanged) && view && cells.HaveFocus() && !cells.HasFocusIn(cellRow, selectedCell))
        view->setFocus(Qt::OtherFocusReason);
    UpdateDetails();
    if (rowsChanged && rowsSelectionChanged)
        ui::CallFromToolkit([this] { rowsSelectionChanged(); });
    if (cellChanged && cellSelectionChanged)
        ui::CallFromToolkit([this] { cellSelectionChanged(); });
}

} // namespace zetui::controls
