#pragma once

#include <string_view>

class QColor;
class QIcon;
class QPainter;
class QRectF;

namespace zetui::skins {

/// The icons that the skins draw themselves, sharp at every scale. Controls: "add", "remove", "reset", "ok",
/// "cancel", "search", "clear"; alerts: "note", "caution", "stop". False for other names.
bool PaintIcon(QPainter& painter, std::string_view name, const QRectF& rect, const QColor& color);
/// In the text colour of the scheme at the time of drawing (selected: the colour on the accent colour);
/// alerts in their own colours. Null for other names.
QIcon MakeIcon(std::string_view name);

} // namespace zetui::skins
