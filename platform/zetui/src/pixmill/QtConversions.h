#pragma once

#include <string>
#include <string_view>

#include <QColor>
#include <QFont>
#include <QString>
#include <zetui/pixmill/Types.h>

/// Between the toolkit's types and Qt's. Main thread.
namespace zetui::pixmill {

inline QColor ToQt(const Color& color)
{
    return {color.red, color.green, color.blue, color.alpha};
}
/// Sharp at its size in pixels; the toolkit's own where the name is empty, and at least one pixel high.
QFont ToQt(const Font& font);
/// The family of the application's font; empty without an application.
std::string DefaultFontName();

/// Valid Unicode: stray units become U+FFFD, control characters spaces.
QString DisplayText(std::wstring_view text);
/// The same, but line breaks stay.
QString DisplayLines(std::string_view utf8);

} // namespace zetui::pixmill
