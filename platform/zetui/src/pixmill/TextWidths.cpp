#include "pixmill/TextWidths.h"

#include "pixmill/QtConversions.h"

namespace zetui::pixmill {

namespace {

constexpr wchar_t first = L' ', last = L'~';
constexpr std::size_t count = last - first + 1;
/// This character stands for the end of the text.
constexpr wchar_t end = last + 1;
constexpr float unknown = -1;

} // namespace

TextWidths::TextWidths(const QFont& font) : metrics(font), advances(count * (count + 1), unknown) {}

double TextWidths::WidthOf(std::wstring_view text) const
{
    double width = 0;
    if (AddUp(text, width))
        return width;
    return metrics.horizontalAdvance(DisplayText(text));
}

bool TextWidths::AddUp(std::wstring_view text, double& width) const
{
    // A ligature of three begins with these two.
    if (text.find(L"ff") != std::wstring_view::npos)
        return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] < first || text[i] > last)
            return false;
        const wchar_t next = i + 1 < text.size() ? text[i + 1] : end;
        if (next < first || next > end)
            return false;
        width += Advance(text[i], next);
    }
    return true;
}

double TextWidths::Advance(wchar_t character, wchar_t next) const
{
    float& advance = advances[static_cast<std::size_t>(character - first) * (count + 1) +
                              static_cast<std::size_t>(next - first)];
    if (advance == unknown) {
        const QChar left(static_cast<char16_t>(character));
        if (next == end) {
            advance = static_cast<float>(metrics.horizontalAdvance(QString(left)));
        } else {
            const QString right(QChar(static_cast<char16_t>(next)));
            advance = static_cast<float>(metrics.horizontalAdvance(left + right) -
                                         metrics.horizontalAdvance(right));
        }
    }
    return advance;
}

} // namespace zetui::pixmill
