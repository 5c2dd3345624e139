#include "tree/TreeHeader.h"

#include <vector>

#include <QMouseEvent>

namespace zetui::controls {

TreeHeader::TreeHeader(QWidget* parent, KeepsPlace keeps)
    : QHeaderView(Qt::Horizontal, parent), keepsPlace(std::move(keeps))
{
    setSectionsMovable(true);
    setSectionsClickable(true);
    setHighlightSections(false);
    setTextElideMode(Qt::ElideRight);
}

void TreeHeader::mousePressEvent(QMouseEvent* event)
{
    const int column = logicalIndexAt(event->position().toPoint());
    setSectionsMovable(column < 0 || !keepsPlace(column));
    QHeaderView::mousePressEvent(event);
}

/// A column moves when the mouse button is let go.
void TreeHeader::mouseReleaseEvent(QMouseEvent* event)
{
    std::vector<int> order;
    for (int place = 0; place < count(); ++place)
        order.push_back(logicalIndex(place));
    QHeaderView::mouseReleaseEvent(event);
    bool allowed = true;
    for (int place = 0; place < static_cast<int>(order.size()); ++place) {
        const int column = order[static_cast<std::size_t>(place)];
        allowed = allowed && (visualIndex(column) == place || !keepsPlace(column));
    }
    for (int place = 0; !allowed && place < static_cast<int>(order.size()); ++place)
        moveSection(visualIndex(order[static_cast<std::size_t>(place)]), place);
}

} // namespace zetui::controls
