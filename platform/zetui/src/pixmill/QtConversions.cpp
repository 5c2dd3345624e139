#include "pixmill/QtConversions.h"

#include <algorithm>
#include <cmath>

#include <QChar>
#include <QGuiApplication>
#include <QTextDocument>
#include <zetcore/string/Utf.h>

namespace zetui::pixmill {

QFont ToQt(const Font& font)
{
    QFont result;
    const std::string name = font.name.empty() ? DefaultFontName() : font.name;
    if (!name.empty())
        result.setFamily(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
    const float size = std::isfinite(font.size) ? font.size : 0.0f;
    result.setPixelSize(std::clamp(static_cast<int>(std::lround(size)), 1, 1000));
    return result;
}

std::string DefaultFontName()
{
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return {};
    return QGuiApplication::font().family().toStdString();
}

QString DisplayText(std::wstring_view text)
{
    return QString::fromStdWString(zetcore::string::ForDisplay(text));
}

QString DisplayLines(std::string_view utf8)
{
    QString lines;
    for (bool first = true;; first = false) {
        const std::size_t end = utf8.find('\n');
        if (!first)
            lines += u'\n';
        lines += DisplayText(zetcore::string::UTF8to16(utf8.substr(0, end)));
        if (end == std::string_view::npos)
            return lines;
        utf8.remove_prefix(end + 1);
    }
}

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
