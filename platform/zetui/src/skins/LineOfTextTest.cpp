#include "skins/LineOfText.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QTest>

#include <zetui/skins/Skins.h>

#include "testing/WindowsFixture.h"

namespace zetui::skins {
namespace {

class LineOfTextTest : public WindowsFixture
{
  protected:
    static QImage Painted(const LineOfText& line, Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter)
    {
        QImage image(200, 30, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setFont(QApplication::font());
        PaintLineOfText(painter, image.rect(), alignment, line);
        return image;
    }
    /// The part of the picture where the two differ.
    static QRect Difference(const QImage& one, const QImage& other)
    {
        QRect found;
        for (int y = 0; y < one.height(); ++y)
            for (int x = 0; x < one.width(); ++x)
                if (one.pixel(x, y) != other.pixel(x, y))
                    found |= QRect(x, y, 1, 1);
        return found;
    }
};

TEST_F(LineOfTextTest, AMarkIsTakenOutAndAPairOfThemIsOne)
{
    const auto check = [](const char* marked, const char* text, qsizetype letter) {
        const LineOfText line = WithoutMarks(QString::fromLatin1(marked));
        EXPECT_EQ(line.text, QString::fromLatin1(text)) << marked;
        EXPECT_EQ(line.letter, letter) << marked;
    };
    check("Scan", "Scan", -1);
    check("&Scan", "Scan", 0);
    check("Res&can", "Rescan", 3);
    check("This && &that", "This & that", 7);
    check("A&&B", "A&B", -1);
    check("&A &B", "A B", 0);
    check("End&", "End&", -1);
    check("", "", -1);
}

TEST_F(LineOfTextTest, TheLineBelowALetterMovesNoLetter)
{
    for (const Qt::Alignment side : {Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter}) {
        const QRect line = Difference(Painted({QStringLiteral("Filter: AVAT"), 2}, side | Qt::AlignVCenter),
                                      Painted({QStringLiteral("Filter: AVAT"), -1}, side | Qt::AlignVCenter));
        EXPECT_EQ(line.height(), 1) << side;
        EXPECT_GE(line.width(), 2) << side;
        EXPECT_LE(line.width(), 6) << side << ": below one letter";
    }
}

TEST_F(LineOfTextTest, LettersOfAnotherFontDoNotMoveTheOthersUpOrDown)
{
    const QString latin = QStringLiteral("Reload");
    const QImage alone = Painted({latin}), both = Painted({latin + QString(QChar(0x8aad))});
    const int width = QFontMetrics(QApplication::font()).horizontalAdvance(latin) - 1;
    EXPECT_EQ(alone.copy(0, 0, width, 30), both.copy(0, 0, width, 30));
}

TEST_F(LineOfTextTest, NothingMovesInAWindowWhileAltIsDown)
{
    QWidget window;
    QPushButton button(QStringLiteral("Sc&an for Plug-Ins"), &window);
    QCheckBox box(QStringLiteral("Rescan &existing plug-ins"), &window);
    QLabel label(QStringLiteral("&Filter:"), &window);
    QLineEdit field(&window);
    label.setBuddy(&field);
    label.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    int top = 0;
    for (QWidget* const widget : std::initializer_list<QWidget*>{&button, &box, &label, &field}) {
        widget->setGeometry(0, top, 200, 24);
        top += 30;
    }
    for (const Skin skin : AllSkins()) {
        SetSkin(skin);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(WaitUntil([&] { return window.isActiveWindow(); }));
        for (QWidget* const widget : std::initializer_list<QWidget*>{&button, &box, &label}) {
            const QImage before = widget->grab().toImage();
            if (widget->style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, widget) != 0)
                continue; // On Windows the user may have chosen to see the lines at all times.
            QTest::keyPress(&window, Qt::Key_Alt);
            const QRect line = Difference(before, widget->grab().toImage());
            QTest::keyRelease(&window, Qt::Key_Alt);
            EXPECT_EQ(line.height(), 1) << widget->metaObject()->className();
        }
    }
}

} // namespace
} // namespace zetui::skins
