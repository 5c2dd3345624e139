#pragma once

#include <string_view>
#include <vector>

#include <QFont>
#include <QFontMetricsF>

namespace zetui::pixmill {

/// Measures texts in one font. Shaping a text costs microseconds, too much for lists that measure all of
/// their cells; so what consists of ASCII characters is added up from the widths of its pairs of neighbours,
/// kerning and ligatures of two included. Must not outlive the application object. Main thread.
class TextWidths
{
  public:
    explicit TextWidths(const QFont& font);

    const QFontMetricsF& Metrics() const noexcept { return metrics; }
    /// In pixels; of the text as it is displayed.
    double WidthOf(std::wstring_view text) const;

  private:
    bool AddUp(std::wstring_view text, double& width) const;
    double Advance(wchar_t character, wchar_t next) const;

    QFontMetricsF metrics;
    /// From the start of a character to the start of the next, by both; below 0 where it is not known yet.
    mutable std::vector<float> advances;
};

} // namespace zetui::pixmill
