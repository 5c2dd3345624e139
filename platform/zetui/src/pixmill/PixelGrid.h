#pragma once

#include <QRectF>

class QColor;
class QPainter;

/// At a scale of 1.5 edges and lines would fall between the pixels of the screen. These operations move them
/// onto whole ones, so that nothing is blurred and lines of one width look the same.
namespace zetui::pixmill {

/// The rectangle with its edges on the nearest pixels of the screen.
QRectF OnWholePixels(const QPainter& painter, const QRectF& rect);
/// The width in whole pixels of the screen, at least one and never more than was asked for: what is drawn
/// stays in the room that it has.
double WholeWidth(const QPainter& painter, double width);
/// Paints a frame along the inside of the rectangle. Its four sides are there at every scale, and have one
/// width.
void PaintFrame(QPainter& painter, const QRectF& rect, const QColor& color, double width);
/// Paints a horizontal or vertical line that fills this rectangle. `atEnd` says that its right or lower edge
/// is the one that keeps its place, not its left or upper one.
void PaintStraightLine(QPainter& painter, const QRectF& line, const QColor& color, bool atEnd);

} // namespace zetui::pixmill
