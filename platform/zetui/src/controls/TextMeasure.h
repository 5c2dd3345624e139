#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QSizeF>
#include <QString>

namespace zetui::controls {

/// The toolkit's font of a size id. A positive `pixels` overrides its size.
QFont ToolkitFont(int sizeId, float pixels = 0);
/// In whole pixels, the "&" of mnemonics not counted.
QSizeF TextSize(const QFontMetricsF& metrics, const QString& text);
/// The text as it is read: without the "&" that marks a key, and with "&" for "&&".
QString WithoutMnemonic(QString text);
/// The room that a button needs around its text: left and right together, above and below together.
inline constexpr QSizeF buttonMargins(24, 4);

} // namespace zetui::controls
