#include "controls/TextMeasure.h"

#include <cmath>

#include <zetui/skins/Skins.h>

namespace zetui::controls {

QFont ToolkitFont(int sizeId, float pixels)
{
    QFont font;
    if (const std::string name = ui::GetFontName(sizeId); !name.empty())
        font.setFamily(QString::fromStdString(name));
    font.setPixelSize(std::max(1, qRound(pixels > 0 ? pixels : ui::GetFontSize(sizeId))));
    return font;
}

QString WithoutMnemonic(QString text)
{
    return text.replace(QStringLiteral("&&"), QStringLiteral("\x01"))
        .remove(QLatin1Char('&'))
        .replace(QLatin1Char('\x01'), QLatin1Char('&'));
}

QSizeF TextSize(const QFontMetricsF& metrics, const QString& text)
{
    const QSizeF size = metrics.size(Qt::TextShowMnemonic, text);
    return {std::ceil(size.width()), std::ceil(metrics.height())};
}

} // namespace zetui::controls
