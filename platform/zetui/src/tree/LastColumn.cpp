#include "tree/LastColumn.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include <QHeaderView>
#include <QTableView>

#include "tree/ColumnShares.h"

namespace zetui::controls {

LastColumn::LastColumn(QTableView& tableView) : view(tableView) {}

void LastColumn::SetTakesFreeWidth(bool takes)
{
    takesFreeWidth = takes;
    Update();
}

void LastColumn::SetGivesWay(int column, int least)
{
    givesWay = column;
    leastWidth = least;
    Update();
}

void LastColumn::Resize(int column, int width)
{
    const bool before = std::exchange(updating, true);
    view.horizontalHeader()->resizeSection(column, width);
    updating = before;
}

void LastColumn::Update()
{
    const QHeaderView& header = *view.horizontalHeader();
    std::erase_if(ownWidths, [&](const auto& item) { return item.first >= header.count(); });
    std::erase_if(paddings, [&](const auto& item) { return item.first >= header.count(); });
    std::erase_if(chosen, [&](int column) { return column >= header.count(); });
    // A view that has not been shown is not laid out yet.
    if (updating || !view.isVisible() || header.count() == 0)
        return;
    const int room = view.viewport()->width();
    std::vector<ColumnShare> columns;
    for (int place = 0; place < header.count(); ++place) {
        const int column = header.logicalIndex(place);
        const auto kind = givesWay < 0 || chosen.contains(column) || (keepsWidth && keepsWidth(column))
                              ? ColumnShare::Kind::Keeps
                          : column == givesWay ? ColumnShare::Kind::GivesWay
                                               : ColumnShare::Kind::Usual;
        const auto padding = paddings.find(column);
        columns.push_back({Width(column) + (padding == paddings.end() ? 0 : padding->second), kind});
    }
    std::vector<int> widths = ShareWidths(columns, room, leastWidth);
    if (takesFreeWidth)
        widths.back() += std::max(0, room - std::accumulate(widths.begin(), widths.end(), 0));
    for (int place = 0; place < header.count(); ++place) {
        const auto at = static_cast<std::size_t>(place);
        const int column = header.logicalIndex(place);
        const int own = Width(column);
        if (widths[at] == own)
            ownWidths.erase(column);
        else
            ownWidths.insert_or_assign(column, own);
        if (header.sectionSize(column) != widths[at])
            Resize(column, widths[at]);
    }
}

void LastColumn::OnResized(int column, int from, int to)
{
    if (!setting && view.isVisible()) {
        // A last column whose edge is dragged to the left is still wider than its own width for a while.
        if (IsWidened(column) && ownWidths[column] <= from) {
            ownWidths[column] = to > from ? to : std::min(ownWidths[column], to);
        } else {
            ownWidths.erase(column);
            paddings.erase(column);
            chosen.insert(column);
        }
    }
    Update();
}

bool LastColumn::IsWidened(int column) const
{
    const QHeaderView& header = *view.horizontalHeader();
    return takesFreeWidth && ownWidths.contains(column) && column == header.logicalIndex(header.count() - 1);
}

void LastColumn::SetWidth(int column, int width)
{
    chosen.erase(column);
    paddings.erase(column);
    ownWidths.erase(column);
    const bool before = std::exchange(setting, true);
    view.setColumnWidth(column, width);
    setting = before;
    Update();
}

void LastColumn::FitWidth(int column, int width, int otherPadding)
{
    SetWidth(column, width);
    paddings.insert_or_assign(column, otherPadding);
    Update();
}

void LastColumn::Choose(int column)
{
    chosen.insert(column);
    Update();
}

void LastColumn::ChooseWidth(int column, int width)
{
    SetWidth(column, width);
    Choose(column);
}

int LastColumn::Width(int column) const
{
    const auto own = ownWidths.find(column);
    return own == ownWidths.end() ? view.columnWidth(column) : own->second;
}

} // namespace zetui::controls
