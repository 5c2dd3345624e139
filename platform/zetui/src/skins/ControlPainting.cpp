#include "skins/ControlPainting.h"

#include <algorithm>

#include <QColor>
#include <QPainter>
#include <QPen>

#include "pixmill/PixelGrid.h"
#include "pixmill/QtConversions.h"

namespace zetui::skins {

namespace {

using pixmill::Color;
using pixmill::ToQt;

class SavedPainter
{
  public:
    explicit SavedPainter(QPainter& saved) : painter(saved)
    {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
    }
    ~SavedPainter() { painter.restore(); }
    SavedPainter(const SavedPainter&) = delete;
    SavedPainter& operator=(const SavedPainter&) = delete;

  private:
    QPainter& painter;
};

void Fill(QPainter& painter, const QRectF& rect, qreal radius, const QColor& color)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(pixmill::OnWholePixels(painter, rect), radius, radius);
}

/// A line along the inside of the rectangle.
void Outline(QPainter& painter, const QRectF& rect, qreal radius, const QColor& color, qreal width)
{
    const qreal thick = pixmill::WholeWidth(painter, width), half = thick / 2;
    painter.setPen(QPen(color, thick));
    painter.setBrush(Qt::NoBrush);
    const qreal middle = std::max(radius - half, 0.0);
    painter.drawRoundedRect(pixmill::OnWholePixels(painter, rect).adjusted(half, half, -half, -half), middle,
                            middle);
}

QColor Faded(const Color& color, double opacity)
{
    QColor faded = ToQt(color);
    faded.setAlphaF(static_cast<float>(opacity));
    return faded;
}

void PaintTick(QPainter& painter, const QRectF& box, const QColor& color, CheckMark mark)
{
    const qreal unit = box.width() / 12;
    const auto at = [&](qreal x, qreal y) { return box.topLeft() + QPointF(x * unit, y * unit); };
    painter.setPen(QPen(color, 1.8 * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (mark == CheckMark::Checked)
        painter.drawPolyline(QPolygonF({at(2.8, 6.3), at(5.1, 8.6), at(9.3, 3.7)}));
    else
        painter.drawLine(at(3.2, 6), at(8.8, 6));
}

} // namespace

void PaintButton(QPainter& painter, const QRectF& rect, const SkinRecord& skin, const SkinColors& colors,
                 const ButtonLook& look)
{
    const SavedPainter saved(painter);
    const ButtonColors used = skin.buttonColors(colors, look);
    const double radius = skin.radii.corner;
    const int room = look.state.focused ? skin.controls.buttonFocusRoom : 0;
    const QRectF face = rect.adjusted(room, room, -room, -room);
    // A ring around the face is a little rounder than the face, and the face a little less.
    const double more = room > 0 ? 1 : 0;
    if (used.fill.alpha > 0)
        Fill(painter, face, radius - more, ToQt(used.fill));
    if (used.outline.alpha > 0)
        Outline(painter, face, radius - more, ToQt(used.outline), 1);
    if (look.state.focused)
        Outline(painter, rect, radius + more, ToQt(colors.focus), 2);
}

void PaintCheckBox(QPainter& painter, const QRectF& rect, const SkinRecord& skin, const SkinColors& colors,
                   const ControlState& state, CheckMark mark)
{
    const SavedPainter saved(painter);
    // A margin of one pixel is left for the focus ring.
    const qreal boxSide = std::min(rect.width(), rect.height()) - 2;
    QRectF box(0, 0, boxSide, boxSide);
    box.moveCenter(rect.center());
    const qreal radius = skin.radii.checkBox;
    const bool marked = mark != CheckMark::None;
    if (!state.enabled) {
        Fill(painter, box, radius, ToQt(marked ? colors.groove : colors.window));
        Outline(painter, box, radius, ToQt(colors.outline), 1);
    } else if (marked) {
        Fill(painter, box, radius,
             ToQt(Pick(state, colors.accent, colors.accentHover, colors.accentPressed)));
    } else {
        Fill(painter, box, radius, ToQt(state.pressed ? colors.buttonPressed : colors.base));
        Outline(painter, box, radius, ToQt(state.hovered ? colors.accent : colors.fieldOutline), 1);
    }
    if (marked)
        PaintTick(painter, box, ToQt(state.enabled ? colors.accentText : colors.disabledText), mark);
    if (state.focused)
        // Around a full box, the focus colour would not stand out.
        Outline(painter, box.adjusted(-1, -1, 1, 1), radius + 1, ToQt(marked ? colors.text : colors.focus),
                2);
}

void PaintField(QPainter& painter, const QRectF& rect, const SkinRecord& skin, const SkinColors& colors,
                const ControlState& state)
{
    const SavedPainter saved(painter);
    const qreal radius = skin.radii.corner;
    Fill(painter, rect, radius, ToQt(state.enabled ? colors.base : colors.window));
    if (state.focused)
        Outline(painter, rect, radius, ToQt(colors.focus), 2);
    else if (!state.enabled)
        Outline(painter, rect, radius, ToQt(colors.outline), 1);
    else
        Outline(painter, rect, radius, ToQt(state.hovered ? colors.text : colors.fieldOutline), 1);
}

void PaintProgress(QPainter& painter, const QRectF& rect, const SkinRecord& skin, const SkinColors& colors,
                   double part, double phase, bool rightToLeft)
{
    const SavedPainter saved(painter);
    const qreal radius = std::min(skin.radii.bar, rect.height() / 2);
    Fill(painter, rect, radius, ToQt(colors.groove));
    QRectF full = rect;
    if (part < 0) {
        // The piece comes in at one end and leaves at the other.
        const qreal length = rect.width() * 0.3;
        full.setLeft(rect.left() - length + (rect.width() + length) * phase);
        full.setWidth(length);
        full &= rect;
    } else {
        full.setWidth(rect.width() * std::min(part, 1.0));
        // Progress that has begun can be seen.
        if (part > 0)
            full.setWidth(std::min(std::max(full.width(), 2 * radius), rect.width()));
    }
    if (rightToLeft)
        full.moveRight(rect.left() + rect.right() - full.left());
    if (full.width() <= 0)
        return;
    Fill(painter, full, std::min(radius, full.width() / 2), ToQt(colors.accent));
}

QColor ScrollGrooveColor(const SkinRecord& skin, const SkinColors& colors)
{
    return ToQt(colors.*skin.scrollGroove);
}

void PaintScrollHandle(QPainter& painter, const QRectF& rect, const SkinRecord& skin,
                       const SkinColors& colors, const ControlState& state)
{
    const SavedPainter saved(painter);
    const qreal radius = std::min({skin.radii.bar, rect.width() / 2, rect.height() / 2});
    const double strength = state.pressed || state.hovered ? 1.0 : 0.7;
    Fill(painter, rect, radius, Faded(colors.handle, state.enabled ? strength : 0.3));
}

void PaintFocusFrame(QPainter& painter, const QRectF& rect, const SkinRecord& skin, const SkinColors& colors)
{
    const SavedPainter saved(painter);
    Outline(painter, rect, skin.radii.corner, ToQt(colors.focus), skin.controls.focusFrameWidth);
}

void PaintSortArrow(QPainter& painter, const QRectF& rect, const SkinColors& colors, bool up)
{
    const SavedPainter saved(painter);
    painter.setPen(QPen(ToQt(colors.text), 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF middle = rect.center();
    const qreal tip = up ? -1.75 : 1.75;
    painter.drawPolyline(
        QPolygonF({middle + QPointF(-3.5, -tip), middle + QPointF(0, tip), middle + QPointF(3.5, -tip)}));
}

} // namespace zetui::skins
