#pragma once

#include <string>
#include <string_view>

#include <QColor>
#include <QFont>
#include <QString>
#include <zetui/pixmill/Types.h>

/// Conversions between the toolkit's types and Qt's. Main thread.
namespace zetui::pixmill {

inline QColor ToQt(const Color& color)
{
    return {color.red, color.green, color.blue, color.alpha};
}
/// The font is sharp at its size in pixels and at least one pixel high. An empty name stands for the
/// toolkit's own font.
QFont ToQt(const Font& font);
/// The family of the application's font; empty without an application.
std::string DefaultFontName();

/// The text as valid Unicode: stray units become U+FFFD, and control characters become spaces.
QString DisplayText(std::wstring_view text);
/// The same, but line breaks stay.
QString DisplayLines(std::string_view utf8);

/// The conversions are exact in both directions, stray units included.
QString ToQString(const std::wstring& text);
std::wstring ToWide(const QString& text);
/// A text for places where Qt guesses whether a text is rich. It is shown as it is, whatever it holds.
QString PlainForTooltip(const std::wstring& text);

} // namespace zetui::pixmill
