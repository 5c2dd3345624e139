#include "skins/LineOfText.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>

#include "pixmill/PixelGrid.h"

namespace zetui::skins {

namespace {

/// The letter's left and right edge, counted from the beginning of the text.
std::pair<qreal, qreal> EdgesOf(const LineOfText& line, const QFont& font)
{
    QTextLayout layout(line.text, font);
    layout.beginLayout();
    const QTextLine shown = layout.createLine();
    layout.endLayout();
    const int letter = static_cast<int>(line.letter);
    const qreal from = shown.cursorToX(letter), to = shown.cursorToX(letter + 1);
    return {std::min(from, to), std::max(from, to)};
}

} // namespace

LineOfText WithoutMarks(const QString& marked)
{
    LineOfText line;
    for (qsizetype at = 0; at < marked.size(); ++at) {
        if (marked[at] == u'&' && at + 1 < marked.size()) {
            ++at;
            if (marked[at] != u'&' && line.letter < 0)
                line.letter = line.text.size();
        }
        line.text += marked[at];
    }
    return line;
}

void PaintLineOfText(QPainter& painter, const QRect& rect, Qt::Alignment alignment, const LineOfText& line)
{
    const QFontMetricsF metrics(painter.font());
    const qreal width = metrics.horizontalAdvance(line.text);
    const qreal height = metrics.ascent() + metrics.descent();
    qreal left = rect.left(), top = rect.top();
    if (alignment & Qt::AlignRight)
        left += rect.width() - width;
    else if (alignment & Qt::AlignHCenter)
        left += (rect.width() - width) / 2;
    if (alignment & Qt::AlignBottom)
        top += rect.height() - height;
    else if (alignment & Qt::AlignVCenter)
        top += (rect.height() - height) / 2;
    const QPointF start(std::round(left), std::round(top + metrics.ascent()));

    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    painter.drawText(start, line.text);
    if (line.letter >= 0) {
        const auto [from, to] = EdgesOf(line, painter.font());
        const QRectF below(start.x() + from, start.y() + std::ceil(metrics.underlinePos()), to - from, 1);
        pixmill::PaintStraightLine(painter, below, painter.pen().color(), false);
    }
    painter.restore();
}

} // namespace zetui::skins
