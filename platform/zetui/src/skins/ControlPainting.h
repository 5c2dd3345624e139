#pragma once

#include <QRectF>

#include "skins/SkinRecord.h"

class QColor;
class QPainter;

/// How the controls look; the style calls these. They leave the painter as it was.
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
/// The frame and background of what is typed into.
void PaintField(QPainter& painter, const QRectF& rect, const SkinRecord& skin, const SkinColors& colors,
                const ControlState& state);
/// `part` of the bar is full; below 0 it is busy, and `phase` (0 to 1) says where its moving piece is.
void PaintProgress(QPainter& painter, const QRectF& rect, const SkinRecord& skin, const SkinColors& colors,
                   double part, double phase, bool rightToLeft);
/// Of the scroll bars, below their handles.
QColor ScrollGrooveColor(const SkinRecord& skin, const SkinColors& colors);
void PaintScrollHandle(QPainter& painter, const QRectF& rect, const SkinRecord& skin,
                       const SkinColors& colors, const ControlState& state);
/// Around what has the keyboard focus and no frame of its own.
void PaintFocusFrame(QPainter& painter, const QRectF& rect, const SkinRecord& skin, const SkinColors& colors);
/// Points up where the sort order is ascending.
void PaintSortArrow(QPainter& painter, const QRectF& rect, const SkinColors& colors, bool up);

} // namespace zetui::skins
