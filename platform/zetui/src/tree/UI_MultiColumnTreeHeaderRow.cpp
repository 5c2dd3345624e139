#include <zetui/tree/UI_MultiColumnTreeHeaderRow.h>

#include <algorithm>
#include <cmath>

#include <QHeaderView>

#include <zetcore/utility/NullPtrException.h>

#include "tree/TreeState.h"

namespace zetui::controls {

UI_MultiColumnTreeHeaderRow::UI_MultiColumnTreeHeaderRow(UI_MultiColumnTree* headerTree) : tree(headerTree)
{
    if (!tree)
        zetcore::utility::DoThrowNullPtrException("UI_MultiColumnTree");
    UI_MultiColumnTree::TreeState& state = TreeAccess::StateOf(*tree);
    if (state.header)
        TreeAccess::ForgetTree(*state.header);
    state.header = this;
    state.rightMargin.reset();
    if (state.view) {
        state.view->horizontalHeader()->setSortIndicatorShown(true);
        state.view->horizontalHeader()->show();
    }
    state.ShowSortIndicator();
}

UI_MultiColumnTreeHeaderRow::~UI_MultiColumnTreeHeaderRow() = default;

void UI_MultiColumnTreeHeaderRow::AppendColumn(const std::wstring& title, unsigned id)
{
    if (tree)
        TreeAccess::StateOf(*tree).model.AppendColumn({id, title});
}

int UI_MultiColumnTreeHeaderRow::GetColumnCount() const
{
    return tree ? TreeAccess::StateOf(*tree).model.columnCount() : 0;
}

unsigned UI_MultiColumnTreeHeaderRow::GetColumnAt(int position) const
{
    if (!tree)
        return 0;
    const UI_MultiColumnTree::TreeState& state = TreeAccess::StateOf(*tree);
    const int column = state.ColumnAtPosition(position);
    return column < 0 ? 0 : state.model.Columns()[static_cast<std::size_t>(column)].id;
}

std::wstring UI_MultiColumnTreeHeaderRow::GetColumnTitle(unsigned id) const
{
    const int column = tree ? TreeAccess::StateOf(*tree).model.ColumnOfId(id) : -1;
    return column < 0 ? std::wstring()
                      : TreeAccess::StateOf(*tree).model.Columns()[static_cast<std::size_t>(column)].title;
}

void UI_MultiColumnTreeHeaderRow::SetColumnWidth(unsigned id, float width)
{
    const int column = tree ? TreeAccess::StateOf(*tree).model.ColumnOfId(id) : -1;
    if (column >= 0 && TreeAccess::StateOf(*tree).view)
        TreeAccess::StateOf(*tree).view->Last().SetWidth(column,
                                                         std::max(0, static_cast<int>(std::lround(width))));
}

float UI_MultiColumnTreeHeaderRow::GetColumnWidth(unsigned id) const
{
    const int column = tree ? TreeAccess::StateOf(*tree).model.ColumnOfId(id) : -1;
    return column >= 0 && TreeAccess::StateOf(*tree).view
               ? static_cast<float>(TreeAccess::StateOf(*tree).view->Last().Width(column))
               : 0;
}

void UI_MultiColumnTreeHeaderRow::SetLastColumnTakesFreeWidth(bool takes)
{
    if (tree && TreeAccess::StateOf(*tree).view)
        TreeAccess::StateOf(*tree).view->Last().SetTakesFreeWidth(takes);
}

void UI_MultiColumnTreeHeaderRow::FitColumn(unsigned id, float width)
{
    const int column = tree ? TreeAccess::StateOf(*tree).model.ColumnOfId(id) : -1;
    if (column >= 0 && TreeAccess::StateOf(*tree).view)
        TreeAccess::StateOf(*tree).view->Last().FitWidth(
            column, std::max(0, static_cast<int>(std::lround(width))), TreeView::OtherPadding());
}

void UI_MultiColumnTreeHeaderRow::SetColumnGivesWay(unsigned id, float least)
{
    if (tree && TreeAccess::StateOf(*tree).view)
        TreeAccess::StateOf(*tree).view->Last().SetGivesWay(TreeAccess::StateOf(*tree).model.ColumnOfId(id),
                                                            static_cast<int>(std::lround(least)));
}

void UI_MultiColumnTreeHeaderRow::SetColumnKeepsPlace(unsigned id, bool keeps)
{
    const int column = tree ? TreeAccess::StateOf(*tree).model.ColumnOfId(id) : -1;
    if (column >= 0)
        TreeAccess::StateOf(*tree).model.SetKeepsPlace(column, keeps);
}

void UI_MultiColumnTreeHeaderRow::MoveColumn(unsigned id, int position)
{
    if (!tree)
        return;
    const UI_MultiColumnTree::TreeState& state = TreeAccess::StateOf(*tree);
    const int from = state.PositionOfColumn(state.model.ColumnOfId(id));
    if (from >= 0 && position >= 0 && position < state.model.columnCount())
        state.view->horizontalHeader()->moveSection(from, position);
}

std::vector<unsigned> UI_MultiColumnTreeHeaderRow::GetColumnOrder() const
{
    std::vector<unsigned> order;
    for (int position = 0; position < GetColumnCount(); ++position)
        order.push_back(GetColumnAt(position));
    return order;
}

bool UI_MultiColumnTreeHeaderRow::SetColumnOrder(const std::vector<unsigned>& ids)
{
    const std::vector<unsigned> order = GetColumnOrder();
    if (!std::is_permutation(ids.begin(), ids.end(), order.begin(), order.end()))
        return false;
    for (std::size_t position = 0; position < ids.size(); ++position) {
        const TreeModel& model = TreeAccess::StateOf(*tree).model;
        if (ids[position] != order[position] && model.KeepsPlace(model.ColumnOfId(order[position])))
            return false;
    }
    for (std::size_t position = 0; position < ids.size(); ++position)
        MoveColumn(ids[position], static_cast<int>(position));
    return true;
}

void UI_MultiColumnTreeHeaderRow::SetSortColumn(unsigned id)
{
    if (!tree)
        return;
    UI_MultiColumnTree::TreeState& state = TreeAccess::StateOf(*tree);
    state.sortColumn = state.model.ColumnOfId(id) < 0 ? 0 : id;
    state.ShowSortIndicator();
}

unsigned UI_MultiColumnTreeHeaderRow::GetSortColumn() const
{
    return tree ? TreeAccess::StateOf(*tree).sortColumn : 0;
}

void UI_MultiColumnTreeHeaderRow::SetSortDirection(bool ascending)
{
    if (!tree)
        return;
    TreeAccess::StateOf(*tree).sortAscending = ascending;
    TreeAccess::StateOf(*tree).ShowSortIndicator();
}

bool UI_MultiColumnTreeHeaderRow::IsSortDirectionAscending() const
{
    return !tree || TreeAccess::StateOf(*tree).sortAscending;
}

void UI_MultiColumnTreeHeaderRow::SetColumnBestFitWidthCallback(std::function<float(unsigned id)> callback)
{
    if (tree)
        TreeAccess::StateOf(*tree).bestFitWidth = std::move(callback);
}

} // namespace zetui::controls
