#include <zetui/pixmill/Pixmill.h>

#include <algorithm>

#include <QPainter>
#include <QPen>
#include <zetcore/utility/NullPtrException.h>
#include <zetui/pixmill/Path.h>

#include "pixmill/PixelGrid.h"
#include "pixmill/QtConversions.h"

namespace zetui::pixmill {

namespace {

QPainter& PainterOf(void* painter)
{
    if (!painter)
        zetcore::utility::DoThrowNullPtrException("QPainter");
    return *static_cast<QPainter*>(painter);
}

QRectF ToQt(const zetcore::geom::RectT<float>& rect)
{
    return {rect.left, rect.top, rect.width, rect.height};
}

QRectF BoundsOf(const Path& path)
{
    QRectF bounds;
    for (bool first = true; const Path::Segment& segment : path.Segments()) {
        const QRectF line =
            QRectF(QPointF(segment.fromX, segment.fromY), QPointF(segment.toX, segment.toY)).normalized();
        bounds =
            first ? line
                  : QRectF(QPointF(std::min(bounds.left(), line.left()), std::min(bounds.top(), line.top())),
                           QPointF(std::max(bounds.right(), line.right()),
                                   std::max(bounds.bottom(), line.bottom())));
        first = false;
    }
    return bounds;
}

} // namespace

Pixmill::Pixmill(void* nativePainter, const SupplierInterface* drawingSupplier)
    : painter(nativePainter), supplier(drawingSupplier ? drawingSupplier : &DefaultSupplier())
{
    PainterOf(painter);
}

Pixmill::~Pixmill() = default;

const SupplierInterface& Pixmill::Supplier() const noexcept
{
    return *supplier;
}

void Pixmill::StrokePath(const PathP& path, const PenP& pen)
{
    if (!path)
        zetcore::utility::DoThrowNullPtrException("PathP");
    if (!pen)
        zetcore::utility::DoThrowNullPtrException("PenP");
    // A pen of width 0 draws nothing here, but the thinnest line in Qt.
    if (!(pen->width > 0))
        return;
    QPainter& target = PainterOf(painter);
    const QColor color = ToQt(pen->color);
    const qreal width = pen->width, half = width / 2;
    const QRectF bounds = BoundsOf(*path);
    target.save();
    target.setPen(QPen(color, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    for (const Path::Segment& segment : path->Segments()) {
        const QPointF from(segment.fromX, segment.fromY), to(segment.toX, segment.toY);
        const bool lies = from.y() == to.y(), stands = from.x() == to.x();
        if (!lies && !stands) {
            target.drawLine(from, to);
            continue;
        }
        // The line is longer by its width, as square caps make it: they close the corners of rectangles.
        const QRectF line = QRectF(from, to).normalized().adjusted(-half, -half, half, half);
        const bool atEnd = lies ? from.y() == bounds.bottom() && bounds.height() > 0
                                : from.x() == bounds.right() && bounds.width() > 0;
        PaintStraightLine(target, line, color, atEnd);
    }
    target.restore();
}

void Pixmill::FillRect(const zetcore::geom::RectT<float>& rect, const Color& color)
{
    PainterOf(painter).fillRect(ToQt(rect), ToQt(color));
}

void Pixmill::FillRoundedRect(const zetcore::geom::RectT<float>& rect, float radius, const Color& color)
{
    QPainter& target = PainterOf(painter);
    target.save();
    target.setRenderHint(QPainter::Antialiasing);
    target.setPen(Qt::NoPen);
    target.setBrush(ToQt(color));
    target.drawRoundedRect(ToQt(rect), static_cast<qreal>(radius), static_cast<qreal>(radius));
    target.restore();
}

void Pixmill::DrawString(const std::wstring& text, const Font& font, const Color& color, float x, float y)
{
    QPainter& target = PainterOf(painter);
    const QPen pen = target.pen();
    const QFont previousFont = target.font();
    target.setFont(ToQt(font));
    target.setPen(ToQt(color));
    target.drawText(QPointF(x, y), DisplayText(text));
    target.setFont(previousFont);
    target.setPen(pen);
}

Pixmill::Clip::Clip(Pixmill& drawingContext, const zetcore::geom::RectT<float>& rect)
    : context(drawingContext)
{
    QPainter& target = PainterOf(context.painter);
    target.save();
    target.setClipRect(ToQt(rect), Qt::IntersectClip);
}

Pixmill::Clip::~Clip()
{
    PainterOf(context.painter).restore();
}

} // namespace zetui::pixmill
