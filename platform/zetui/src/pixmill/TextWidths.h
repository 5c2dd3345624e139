#pragma once

#include <string_view>
#include <vector>

#include <QFont>
#include <QFontMetricsF>

namespace zetui::pixmill {

/// Measures texts in one font. Shaping a text costs microseconds, too much for lists that measure all of
/// their cells. So a text of ASCII characters is measured by adding up its pairs of neighbours, with kerning
/// and ligatures of two. It must not outlive the application object. Main thread.
class TextWidths
{
  public:
    explicit TextWidths(const QFont& font);

    const QFontMetricsF& Metrics() const noexcept { return metrics; }
    /// The width in pixels of the text as it is displayed.
    double WidthOf(std::wstring_view text) const;

  private:
    bool AddUp(std::wstring_view text, double& width) const;
    double Advance(wchar_t character, wchar_t next) const;

    QFontMetricsF metrics;
    /// The distance from the start of a character to the start of the next, by both. It is below 0 while it
    /// is not known.
    mutable std::vector<float> advances;
};

} // namespace zetui::pixmill
