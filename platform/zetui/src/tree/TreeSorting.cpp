#include <utility>

#include <QHeaderView>

#include "application/HandlerErrors.h"
#include "tree/TreeState.h"

namespace zetui::controls {

using TreeState = UI_MultiColumnTree::TreeState;

void TreeState::RequestSort()
{
    if (sortColumn == 0)
        SortByUsualColumn();
    sortPending = true;
    ForgetSortedPlaces();
    Flush();
}

/// An order that nobody has chosen is the one that a title explains: by the names of the rows. A list
/// without titles stays in fill order.
void TreeState::SortByUsualColumn()
{
    const int column = ColumnAtPosition(NamePosition());
    if (!header || column < 0)
        return;
    sortColumn = model.Columns()[static_cast<std::size_t>(column)].id;
    sortAscending = true;
    ShowSortIndicator();
}

std::vector<UI_MultiColumnTreeRow*> TreeState::RowsToShow()
{
    std::vector<UI_MultiColumnTreeRow*> next;
    next.reserve(rows.size());
    const bool sort = std::exchange(sortPending, false);
    rowsPending = false;
    if (!sort) {
        next = model.Shown();
        for (std::size_t i = next.size(); i < rows.size(); ++i)
            next.push_back(rows[i].get());
        return next;
    }
    const int position = PositionOfColumn(model.ColumnOfId(sortColumn));
    if (sortColumn != 0 && position >= 0 && (sortData || cellText))
        next = RowsSorted(position);
    if (next.size() != rows.size()) {
        next.clear();
        for (const RowPtr& row : rows)
            next.push_back(row.get());
    }
    return next;
}

/// Empty when the texts cannot be had. A list in fill order is better than a list without rows.
std::vector<UI_MultiColumnTreeRow*> TreeState::RowsSorted(int position)
{
    const SortedBy by{sortColumn, position, sortAscending};
    if (by != std::exchange(sortedBy, by))
        ForgetSortedPlaces();
    std::vector<UI_MultiColumnTreeRow*> next = RowsInKnownOrder();
    if (next.size() == rows.size())
        return next;
    next.clear();
    const CellSortDataFunction& text = sortData ? sortData : cellText;
    if (!order)
        order = std::make_unique<NaturalOrder>();
    ui::CallFromToolkit([&] {
        const std::vector<int> sorted = order->Sorted(
            static_cast<int>(rows.size()),
            [&](int index) { return text(rows[static_cast<std::size_t>(index)], position); }, sortAscending);
        for (const int index : sorted)
            next.push_back(rows[static_cast<std::size_t>(index)].get());
    });
    sortedRows.assign(next.begin(), next.end());
    for (std::size_t place = 0; place < next.size(); ++place)
        TreeAccess::SortedPlaceOf(*next[place]) = static_cast<int>(place);
    return next;
}

std::vector<UI_MultiColumnTreeRow*> TreeState::RowsInKnownOrder() const
{
    if (sortedRows.size() < rows.size())
        return {};
    std::vector<UI_MultiColumnTreeRow*> places(sortedRows.size());
    for (const RowPtr& row : rows) {
        const int place = TreeAccess::SortedPlaceOf(*row);
        if (place < 0 || static_cast<std::size_t>(place) >= places.size() ||
            sortedRows[static_cast<std::size_t>(place)] != row.get())
            return {};
        places[static_cast<std::size_t>(place)] = row.get();
    }
    std::erase(places, nullptr);
    return places;
}

void TreeState::SortByHeader(int column, bool ascending)
{
    if (showsSortIndicator || column < 0 || column >= model.columnCount())
        return;
    sortColumn = model.Columns()[static_cast<std::size_t>(column)].id;
    sortAscending = ascending;
    RequestSort();
}

void TreeState::ShowSortIndicator()
{
    if (!view)
        return;
    showsSortIndicator = true;
    view->horizontalHeader()->setSortIndicator(sortColumn == 0 ? -1 : model.ColumnOfId(sortColumn),
                                               sortAscending ? Qt::AscendingOrder : Qt::DescendingOrder);
    showsSortIndicator = false;
}

} // namespace zetui::controls
