#include "tree/TreeView.h"

#include <algorithm>

#include <QApplication>
#include <QHeaderView>
#include <QPaintEvent>
#include <QPainter>

#include <zetui/pixmill/Pixmill.h>

#include "application/HandlerErrors.h"
#include "nodes/NodeAccess.h"
#include "pixmill/PixelGrid.h"
#include "pixmill/QtConversions.h"
#include "skins/SkinRecord.h"
#include "tree/TreeState.h"

namespace zetui::controls {

void TreeView::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    painter.fillRect(event->rect(), pixmill::ToQt(skins::CurrentColors().base));
    if (!tree)
        return;
    const auto [first, last] = PlacesInSight();
    for (int place = first; place <= last; ++place) {
        const QRect exposed = RowRect(place) & event->rect();
        if (!exposed.isEmpty())
            PaintRow(painter, place, exposed);
    }
    if (tree->rows.empty())
        PaintEmptyText(painter);
    if (hasFocus())
        PaintFocus(painter);
}

bool TreeView::HasFocusWithin() const
{
    const QWidget* const focus = QApplication::focusWidget();
    return focus && (focus == this || isAncestorOf(focus));
}

QColor TreeView::RowColor(int place) const
{
    const skins::SkinColors& colors = skins::CurrentColors();
    // The texts of a list that is switched off are too pale for a selection behind them.
    if (tree->IsSelected(place) && !isEnabled())
        return pixmill::ToQt(colors.hoverRow);
    if (tree->IsSelected(place))
        return pixmill::ToQt(HasFocusWithin() ? colors.selection : colors.inactiveSelection);
    if (place == hoverPlace && isEnabled())
        return pixmill::ToQt(colors.hoverRow);
    return pixmill::ToQt(place % 2 == 0 ? colors.base : colors.alternateBase);
}

void TreeView::PaintRow(QPainter& painter, int place, const QRect& exposed)
{
    painter.fillRect(exposed, RowColor(place));
    const QRect row = RowRect(place);
    if (skins::CurrentSkin().hasRowLines)
        pixmill::PaintStraightLine(painter, QRect(row.left(), row.bottom(), row.width(), 1),
                                   pixmill::ToQt(skins::CurrentColors().gridLine), true);
    if (tree->drawCell)
        PaintCells(painter, place, row, exposed);
}

void TreeView::PaintCells(QPainter& painter, int place, const QRect& row, const QRect& exposed)
{
    const UI_MultiColumnTree::RowPtr treeRow = tree->Hold(tree->model.RowAt(place));
    for (int position = 0; position < tree->model.columnCount(); ++position) {
        const int column = horizontalHeader()->logicalIndex(position);
        const QRect cell(columnViewportPosition(column), row.top(), columnWidth(column), row.height());
        if (!cell.intersects(exposed))
            continue;
        painter.save();
        painter.setClipRect(cell & exposed);
        ui::CallFromToolkit([&] {
            pixmill::Pixmill context(&painter, ui::NodeAccess::SupplierOf(this));
            tree->drawCell(&context, treeRow, position,
                           {static_cast<float>(cell.left()), static_cast<float>(cell.top()),
                            static_cast<float>(cell.width()), static_cast<float>(cell.height())});
        });
        painter.restore();
    }
}

void TreeView::PaintEmptyText(QPainter& painter)
{
    constexpr int margin = 16;
    const skins::SkinColors& colors = skins::CurrentColors();
    painter.setPen(pixmill::ToQt(isEnabled() ? colors.placeholder : colors.disabledText));
    painter.setFont(font());
    painter.drawText(viewport()->rect().adjusted(margin, 4, -margin, -4),
                     static_cast<int>(Qt::AlignCenter | Qt::TextWordWrap),
                     pixmill::ToQString(tree->EmptyText()));
}

/// The rectangle of the selected cell, otherwise of the selected row, otherwise of the place where the
/// keyboard would begin. The frame around the whole list, which the style draws, has the same colour then.
void TreeView::PaintFocus(QPainter& painter)
{
    const QColor color = pixmill::ToQt(skins::CurrentColors().focus);
    const bool anySelected = tree->FirstSelectedPlace() >= 0;
    if (!anySelected && tree->options.indicateFocus)
        return;
    const int framed = tree->keyboard.FramedPlace();
    if (framed < 0)
        return;
    QRect focus = RowRect(framed);
    if (const int column = tree->ColumnAtPosition(tree->selectedCell); anySelected && column >= 0) {
        focus.setLeft(columnViewportPosition(column));
        focus.setWidth(columnWidth(column));
    }
    pixmill::PaintFrame(painter, focus, color, 1);
}

} // namespace zetui::controls
