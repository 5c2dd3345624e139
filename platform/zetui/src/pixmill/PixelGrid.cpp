#include "pixmill/PixelGrid.h"

#include <algorithm>
#include <cmath>

#include <QColor>
#include <QPainter>
#include <QTransform>

namespace zetui::pixmill {

QRectF OnWholePixels(const QPainter& painter, const QRectF& rect)
{
    const QTransform toScreen = painter.deviceTransform();
    const QRectF onScreen = toScreen.mapRect(rect);
    const QRectF whole(QPointF(std::round(onScreen.left()), std::round(onScreen.top())),
                       QPointF(std::round(onScreen.right()), std::round(onScreen.bottom())));
    return toScreen.inverted().mapRect(whole);
}

double WholeWidth(const QPainter& painter, double width)
{
    const double scale = painter.deviceTransform().m11();
    if (!(scale > 0))
        return width;
    // A width of 2 at a scale of 1.5 may be a little less than 3 in numbers.
    constexpr double little = 1e-6;
    return std::max(std::floor(width * scale + little), 1.0) / scale;
}

void PaintFrame(QPainter& painter, const QRectF& rect, const QColor& color, double width)
{
    const QRectF whole = OnWholePixels(painter, rect);
    const double thick = WholeWidth(painter, width);
    painter.fillRect(QRectF(whole.left(), whole.top(), whole.width(), thick), color);
    painter.fillRect(QRectF(whole.left(), whole.bottom() - thick, whole.width(), thick), color);
    painter.fillRect(QRectF(whole.left(), whole.top(), thick, whole.height()), color);
    painter.fillRect(QRectF(whole.right() - thick, whole.top(), thick, whole.height()), color);
}

void PaintStraightLine(QPainter& painter, const QRectF& line, const QColor& color, bool atEnd)
{
    QRectF whole = OnWholePixels(painter, line);
    const bool lies = line.width() >= line.height();
    const double thick = WholeWidth(painter, lies ? line.height() : line.width());
    if (lies)
        whole = QRectF(whole.left(), atEnd ? whole.bottom() - thick : whole.top(), whole.width(), thick);
    else
        whole = QRectF(atEnd ? whole.right() - thick : whole.left(), whole.top(), thick, whole.height());
    painter.fillRect(whole, color);
}

} // namespace zetui::pixmill
