#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QSizeF>
#include <QString>

namespace zetui::controls {

/// The toolkit's font of a size id; a positive `pixels` overrides its size.
QFont ToolkitFont(int sizeId, float pixels = 0);
/// In whole pixels, the "&" of mnemonics not counted.
QSizeF TextSize(const QFontMetricsF& metrics, const QString& text);
/// Left, right, above and below together: what a button needs around its text.
inline constexpr QSizeF buttonMargins(24, 4);

} // namespace zetui::controls
