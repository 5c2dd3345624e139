#pragma once

#include <string>

#include <QString>

namespace zetui::pixmill {

/// Exact in both directions, stray units included.
QString ToQString(const std::wstring& text);
std::wstring ToWide(const QString& text);
/// For places where Qt guesses whether a text is rich: shown as it is, whatever it holds.
QString PlainForTooltip(const std::wstring& text);

} // namespace zetui::pixmill
