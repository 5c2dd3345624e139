#include "pixmill/QtText.h"

#include <QChar>
#include <QTextDocument>

namespace zetui::pixmill {

QString ToQString(const std::wstring& text)
{
    QString result;
    result.reserve(static_cast<qsizetype>(text.size()));
    for (const wchar_t unit : text) {
        const auto code = static_cast<char32_t>(unit);
        if (QChar::requiresSurrogates(code)) {
            result.append(QChar(QChar::highSurrogate(code)));
            result.append(QChar(QChar::lowSurrogate(code)));
        } else {
            result.append(QChar(static_cast<char16_t>(code)));
        }
    }
    return result;
}

std::wstring ToWide(const QString& text)
{
    std::wstring result;
    result.reserve(static_cast<std::size_t>(text.size()));
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar unit = text.at(i);
        const bool pair = sizeof(wchar_t) > sizeof(char16_t) && unit.isHighSurrogate() &&
                          i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        if (pair)
            result.push_back(static_cast<wchar_t>(QChar::surrogateToUcs4(unit, text.at(++i))));
        else
            result.push_back(static_cast<wchar_t>(unit.unicode()));
    }
    return result;
}

QString PlainForTooltip(const std::wstring& text)
{
    const QString plain = ToQString(text);
    return Qt::mightBeRichText(plain) ? Qt::convertFromPlainText(plain) : plain;
}

} // namespace zetui::pixmill
