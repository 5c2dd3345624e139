#pragma once

#include <QRectF>

#include "skins/SkinRecord.h"

class QColor;
class QPainter;

/// Paints the controls of the skins for the style. The painter stays as it was.
namespace zetui::skins {

enum class CheckMark
{
    None,
    Mixed,
    Checked,
};

void PaintButton(QPainter& painter, const QRectF& rect, const SkinRecord& skin, const SkinColors& colors,
                 const ButtonLook& look);
void PaintCheckBox(QPainter& painter, const QRectF& rect, const SkinRecord& skin, const SkinColors& colors,
                   const ControlState& state, CheckMark mark);
/// Paints the frame and background of a field that the user types into.
void PaintField(QPainter& painter, const QRectF& rect, const SkinRecord& skin, const SkinColors& colors,
                const ControlState& state);
/// `part` of the bar is full. Below 0 the bar is busy, and `phase` (0 to 1) says where its moving piece is.
void PaintProgress(QPainter& painter, const QRectF& rect, const SkinRecord& skin, const SkinColors& colors,
                   double part, double phase, bool rightToLeft);
/// The colour of scroll bars, below their handles.
QColor ScrollGrooveColor(const SkinRecord& skin, const SkinColors& colors);
void PaintScrollHandle(QPainter& painter, const QRectF& rect, const SkinRecord& skin,
                       const SkinColors& colors, const ControlState& state);
/// Paints the frame around a control that has the keyboard focus and no frame of its own.
void PaintFocusFrame(QPainter& painter, const QRectF& rect, const SkinRecord& skin, const SkinColors& colors);
/// The arrow points up for an ascending order.
void PaintSortArrow(QPainter& painter, const QRectF& rect, const SkinColors& colors, bool up);

} // namespace zetui::skins
