#include "pixmill/QtConversions.h"

#include <algorithm>
#include <cmath>

#include <QGuiApplication>
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

} // namespace zetui::pixmill
