#pragma once

#include <string_view>

class QColor;
class QIcon;
class QPainter;
class QRectF;

namespace zetui::skins {

/// Paints an icon of the skins, which is sharp at every scale. Controls have "add", "remove", "reset", "ok",
/// "cancel", "search" and "clear", alerts have "note", "caution" and "stop". False for other names.
bool PaintIcon(QPainter& painter, std::string_view name, const QRectF& rect, const QColor& color);
/// Makes an icon in the text colour of the scheme at the time of drawing. A selected icon has the colour of
/// text on the accent colour, and alerts have their own colours. Null for other names.
QIcon MakeIcon(std::string_view name);

} // namespace zetui::skins
