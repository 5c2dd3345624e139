#include "tree/LastColumn.h"

#include <algorithm>
#include <utility>

#include <QHeaderView>
#include <QTableView>

namespace zetui::controls {

LastColumn::LastColumn(QTableView& tableView) : view(tableView) {}

void LastColumn::SetTakesFreeWidth(bool takes)
{
    takesFreeWidth = takes;
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
    // A view that has not been shown is not laid out yet.
    if (updating || !view.isVisible())
        return;
    const QHeaderView& header = *view.horizontalHeader();
    const int last = takesFreeWidth && header.count() > 0 ? header.logicalIndex(header.count() - 1) : -1;
    if (widened >= 0 && widened != last && widened < header.count())
        Resize(widened, ownWidth);
    if (widened != last)
        ownWidth = last < 0 ? 0 : header.sectionSize(last);
    widened = last;
    if (last >= 0)
        Resize(last, std::max(ownWidth, view.viewport()->width() - header.sectionPosition(last)));
}

void LastColumn::OnResized(int column, int from, int to)
{
    // A column whose edge is dragged to the left is still wider than its own width for a while.
    if (column == widened)
        ownWidth = to > from ? to : std::min(ownWidth, to);
    Update();
}

void LastColumn::SetWidth(int column, int width)
{
    if (column != widened) {
        view.setColumnWidth(column, width);
        return;
    }
    ownWidth = std::max(width, view.horizontalHeader()->minimumSectionSize());
    Update();
}

int LastColumn::Width(int column) const
{
    return column == widened ? ownWidth : view.columnWidth(column);
}

} // namespace zetui::controls
