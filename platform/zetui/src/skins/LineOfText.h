#pragma once

#include <QRect>
#include <QString>

class QPainter;

namespace zetui::skins {

/// A line of text on a control, and the place of the letter that works with Alt; -1 for none.
struct LineOfText
{
    QString text;
    qsizetype letter = -1;
};

/// Takes the marks out of a text: "&&" is an "&", and another "&" marks the letter behind it.
LineOfText WithoutMarks(const QString& marked);

/// Draws the line in the rectangle, on the base line of the painter's font, whatever fonts its letters come
/// from. A line below the letter moves no other letter.
void PaintLineOfText(QPainter& painter, const QRect& rect, Qt::Alignment alignment, const LineOfText& line);

} // namespace zetui::skins
