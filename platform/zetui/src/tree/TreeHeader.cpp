#include "tree/TreeHeader.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include <QApplication>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QStyle>
#include <QToolTip>

namespace zetui::controls {

TreeHeader::TreeHeader(QWidget* parent, KeepsPlace keeps)
    : QHeaderView(Qt::Horizontal, parent), keepsPlace(std::move(keeps)), dropLine(new QWidget(viewport()))
{
    setObjectName(QStringLiteral("TreeHeader"));
    // Qt would let a column go anywhere and take it back afterwards.
    setSectionsMovable(false);
    setSectionsClickable(true);
    setHighlightSections(false);
    setTextElideMode(Qt::ElideRight);
    dropLine->setAutoFillBackground(true);
    dropLine->setBackgroundRole(QPalette::Link);
    dropLine->setAttribute(Qt::WA_TransparentForMouseEvents);
    dropLine->hide();
}

void TreeHeader::mousePressEvent(QMouseEvent* event)
{
    EndDrag();
    const QPoint at = event->position().toPoint();
    if (event->button() == Qt::LeftButton && !IsEdge(at.x())) {
        pressed = logicalIndexAt(at);
        pressedAt = at;
    }
    QHeaderView::mousePressEvent(event);
}

void TreeHeader::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint at = event->position().toPoint();
    if (pressed >= 0 && event->buttons().testFlag(Qt::LeftButton))
        dragging = dragging || std::abs(at.x() - pressedAt.x()) >= QApplication::startDragDistance();
    if (dragging)
        ShowDrag(at.x());
    else
        QHeaderView::mouseMoveEvent(event);
}

/// A column moves when the mouse button is let go.
void TreeHeader::mouseReleaseEvent(QMouseEvent* event)
{
    if (!dragging) {
        pressed = -1;
        QHeaderView::mouseReleaseEvent(event);
        return;
    }
    const int from = visualIndex(pressed);
    const int to = DropPlace(event->position().toPoint().x());
    EndDrag();
    // Let go outside of all titles, the button is no click.
    const QPointF outside(-1, -1);
    QMouseEvent away(QEvent::MouseButtonRelease, outside, event->globalPosition(), event->button(),
                     event->buttons(), event->modifiers());
    QHeaderView::mouseReleaseEvent(&away);
    if (from != to && MayMove(from, to))
        moveSection(from, to);
}

/// The place at which a press begins to resize a column.
bool TreeHeader::IsEdge(int x) const
{
    const int column = logicalIndexAt(x);
    if (column < 0)
        return false;
    const int grip = style()->pixelMetric(QStyle::PM_HeaderGripMargin, nullptr, this);
    const int left = sectionViewportPosition(column);
    return x >= left + sectionSize(column) - grip || (x < left + grip && visualIndex(column) > 0);
}

/// The place that the pressed column would have.
int TreeHeader::DropPlace(int x) const
{
    const int from = visualIndex(pressed);
    const int under = logicalIndexAt(std::clamp(x, 0, viewport()->width() - 1));
    if (under < 0)
        return count() - 1;
    const bool behind = x >= sectionViewportPosition(under) + sectionSize(under) / 2;
    const int gap = visualIndex(under) + (behind ? 1 : 0);
    return gap > from ? gap - 1 : gap;
}

bool TreeHeader::MayMove(int from, int to) const
{
    for (int place = std::min(from, to); place <= std::max(from, to); ++place)
        if (keepsPlace(logicalIndex(place)))
            return false;
    return true;
}

void TreeHeader::ShowDrag(int x)
{
    const int from = visualIndex(pressed);
    const int to = DropPlace(x);
    const bool may = MayMove(from, to);
    viewport()->setCursor(may ? Qt::ClosedHandCursor : Qt::ForbiddenCursor);
    dropLine->setVisible(may && from != to);
    const int target = logicalIndex(to);
    const int edge = sectionViewportPosition(target) + (to > from ? sectionSize(target) : 0);
    constexpr int thickness = 3;
    dropLine->setGeometry(std::clamp(edge - thickness / 2, 0, viewport()->width() - thickness), 0, thickness,
                          viewport()->height());
}

void TreeHeader::EndDrag()
{
    pressed = -1;
    if (!std::exchange(dragging, false))
        return;
    dropLine->hide();
    viewport()->unsetCursor();
}

/// A title that is cut shows itself whole.
bool TreeHeader::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QHeaderView::viewportEvent(event);
    const auto& help = static_cast<const QHelpEvent&>(*event);
    const int column = logicalIndexAt(help.pos());
    const bool isCut = column >= 0 && sectionSizeFromContents(column).width() > sectionSize(column);
    QToolTip::showText(help.globalPos(),
                       isCut ? model()->headerData(column, Qt::Horizontal).toString() : QString(),
                       viewport());
    return true;
}

} // namespace zetui::controls
