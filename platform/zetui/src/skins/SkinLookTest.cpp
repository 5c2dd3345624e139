// How the skins draw controls, as people see it.
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <string>
#include <tuple>
#include <vector>

#include <QCheckBox>
#include <QHBoxLayout>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionSlider>
#include <zetui/pixmill/Pixmill.h>
#include <zetui/skins/Skins.h>

#include "pixmill/QtConversions.h"
#include "skins/SkinColors.h"
#include "skins/SkinRecord.h"
#include "skins/SkinStyle.h"
#include "testing/PrintSkin.h"
#include "testing/WindowsFixture.h"

namespace zetui::skins {
namespace {

/// These tests run in each skin and scheme.
class SkinLook : public WindowsFixture, public ::testing::WithParamInterface<std::tuple<Skin, Scheme>>
{
  protected:
    SkinLook() : WindowsFixture(std::get<0>(GetParam())) { SetScheme(std::get<1>(GetParam())); }

    /// Pixels that differ so much between two pictures that people see it.
    static int VisibleDifference(const QImage& one, const QImage& other)
    {
        int count = 0;
        for (int y = 0; y < one.height(); ++y)
            for (int x = 0; x < one.width(); ++x)
                count += ContrastRatio(ColorAt(one, x, y), ColorAt(other, x, y)) >= 2;
        return count;
    }
    static pixmill::Color ColorAt(const QImage& image, int x, int y)
    {
        const QRgb pixel = image.pixel(x, y);
        return {static_cast<std::uint8_t>(qRed(pixel)), static_cast<std::uint8_t>(qGreen(pixel)),
                static_cast<std::uint8_t>(qBlue(pixel)), 255};
    }
};

TEST_P(SkinLook, TheKeyboardFocusIsClearlyVisible)
{
    QWidget window;
    QHBoxLayout row(&window);
    QPushButton elsewhere, accent(QStringLiteral("OK")), plain(QStringLiteral("Add")),
        outlined(QStringLiteral("Cancel")), quiet(QStringLiteral("Quiet"));
    accent.setProperty(kVariantProperty, static_cast<int>(ButtonVariant::Accent));
    plain.setProperty(kVariantProperty, static_cast<int>(ButtonVariant::Primary));
    outlined.setProperty(kVariantProperty, static_cast<int>(ButtonVariant::Negative));
    quiet.setProperty(kVariantProperty, static_cast<int>(ButtonVariant::Primary));
    quiet.setProperty(kQuietProperty, true);
    QCheckBox unchecked, checked, labelled(QStringLiteral("Rescan"));
    checked.setChecked(true);
    QLineEdit field;
    for (QWidget* const widget : std::initializer_list<QWidget*>{
             &elsewhere, &accent, &plain, &outlined, &quiet, &unchecked, &checked, &labelled, &field})
        row.addWidget(widget);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(WaitUntil([&] { return window.isActiveWindow(); }));
    for (QWidget* const widget : std::initializer_list<QWidget*>{&accent, &plain, &outlined, &quiet,
                                                                 &unchecked, &checked, &labelled, &field}) {
        elsewhere.setFocus(Qt::TabFocusReason);
        const QImage without = widget->grab().toImage();
        widget->setFocus(Qt::TabFocusReason);
        ASSERT_TRUE(widget->hasFocus());
        // The box of a check box is the smallest thing that has a focus. Its outline has about so many
        // pixels.
        EXPECT_GE(VisibleDifference(without, widget->grab().toImage()), 30)
            << widget->metaObject()->className();
    }
}

TEST_P(SkinLook, TheRingOfABoxWithALabelIsAroundTheLabelAlone)
{
    QWidget window;
    QHBoxLayout row(&window);
    QPushButton elsewhere;
    QCheckBox labelled(QStringLiteral("Rescan"));
    row.addWidget(&elsewhere);
    row.addWidget(&labelled);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(WaitUntil([&] { return window.isActiveWindow(); }));
    QStyleOptionButton option;
    option.initFrom(&labelled);
    option.text = labelled.text();
    const QRect box = labelled.style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, &labelled);
    elsewhere.setFocus(Qt::TabFocusReason);
    const QImage without = labelled.grab().toImage();
    labelled.setFocus(Qt::TabFocusReason);
    const QImage with = labelled.grab().toImage();
    EXPECT_EQ(with.copy(box), without.copy(box));
    EXPECT_NE(with, without);
}

TEST_P(SkinLook, TheRingOfABoxInALowRowIsEven)
{
    QWidget window;
    QPushButton elsewhere(&window);
    QCheckBox box(&window);
    for (const bool checked : {false, true}) {
        box.setChecked(checked);
        box.setGeometry(30, 30, 40, 14);
        window.show();
        window.activateWindow();
        ASSERT_TRUE(WaitUntil([&] { return window.isActiveWindow(); }));
        box.setFocus(Qt::TabFocusReason);
        const QImage image = box.grab().toImage();
        const SkinColors& colors = CurrentColors();
        const QColor ring = pixmill::ToQt(checked ? colors.text : colors.focus);
        const auto thickness = [&](int x, int y, int stepX, int stepY) {
            int count = 0;
            for (; image.valid(x, y) && (count == 0 || image.pixelColor(x, y) == ring);
                 x += stepX, y += stepY)
                count += image.pixelColor(x, y) == ring;
            return count;
        };
        const int middle = 7;
        int left = 0, right = 0;
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, middle) == ring) {
                left = right == 0 ? x : left;
                right = x;
            }
        const int across = (left + right) / 2;
        EXPECT_EQ(thickness(0, middle, 1, 0), 2);
        EXPECT_EQ(thickness(image.width() - 1, middle, -1, 0), 2);
        EXPECT_EQ(thickness(across, 0, 0, 1), 2);
        EXPECT_EQ(thickness(across, image.height() - 1, 0, -1), 2);
    }
}

TEST_P(SkinLook, ButtonsThatCannotBePressedLookSo)
{
    QPushButton button(QStringLiteral("Scan for Plug-Ins"));
    button.setProperty(kVariantProperty, static_cast<int>(ButtonVariant::Accent));
    const QImage enabled = button.grab().toImage();
    button.setEnabled(false);
    EXPECT_GT(VisibleDifference(enabled, button.grab().toImage()), 20);
}

TEST_P(SkinLook, TheCornerWhereTwoScrollBarsMeetLooksLikeTheirGrooves)
{
    QScrollArea area;
    area.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    area.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    area.resize(200, 150);
    area.show();
    const auto inArea = [&area](const QScrollBar& bar) {
        return QRect(bar.mapTo(&area, QPoint()), bar.size());
    };
    const QRect down = inArea(*area.verticalScrollBar()), across = inArea(*area.horizontalScrollBar());
    const QRect corner(down.left(), across.top(), down.width(), across.height());
    ASSERT_FALSE(corner.intersects(down) || corner.intersects(across));
    const QImage picture = area.grab().toImage();
    const SkinRecord& record = CurrentSkin();
    EXPECT_EQ(picture.pixelColor(down.center()), pixmill::ToQt(CurrentColors().*record.scrollGroove));
    for (int y = corner.top(); y <= corner.bottom(); ++y)
        for (int x = corner.left(); x <= corner.right(); ++x)
            ASSERT_EQ(picture.pixel(x, y), picture.pixel(down.center())) << x << ", " << y;
}

TEST_P(SkinLook, TheButtonThatReturnPressesStandsOut)
{
    QWidget window;
    QPushButton ok(QStringLiteral("OK"), &window), other(QStringLiteral("OK"), &window);
    // In a skin with button variants, the archive says by the variant which one it is.
    const bool hasVariants = RecordOf(std::get<0>(GetParam())).hasButtonVariants;
    ok.setProperty(kVariantProperty,
                   static_cast<int>(hasVariants ? ButtonVariant::Accent : ButtonVariant::Primary));
    other.setProperty(kVariantProperty, static_cast<int>(ButtonVariant::Primary));
    ok.setDefault(true);
    for (QPushButton* const button : {&ok, &other})
        button->resize(77, 24);
    const QImage plain = other.grab().toImage(), standingOut = ok.grab().toImage();
    // The outline differs, and the face.
    int different = 0;
    for (int y = 0; y < plain.height(); ++y) {
        for (int x = 0; x < plain.width(); ++x) {
            const QColor one = plain.pixelColor(x, y), two = standingOut.pixelColor(x, y);
            different += std::abs(one.red() - two.red()) + std::abs(one.green() - two.green()) +
                             std::abs(one.blue() - two.blue()) >=
                         40;
        }
    }
    EXPECT_GE(different, plain.width() * plain.height() / 2);
    ok.setFocus();
    window.show();
    window.activateWindow();
    ASSERT_TRUE(WaitUntil([&] { return ok.hasFocus(); }));
    EXPECT_GE(VisibleDifference(standingOut, ok.grab().toImage()), 30) << "the focus is something else";
}

TEST_P(SkinLook, CheckBoxesShowTheirThreeStates)
{
    QCheckBox box;
    box.setTristate(true);
    std::vector<QImage> pictures;
    for (const Qt::CheckState state : {Qt::Unchecked, Qt::PartiallyChecked, Qt::Checked}) {
        box.setCheckState(state);
        pictures.push_back(box.grab().toImage());
    }
    EXPECT_GT(VisibleDifference(pictures[0], pictures[1]), 20);
    EXPECT_GT(VisibleDifference(pictures[0], pictures[2]), 20);
    EXPECT_GT(VisibleDifference(pictures[1], pictures[2]), 5);
}

TEST_P(SkinLook, TheWholeScrollBarScrolls)
{
    QScrollBar bar(Qt::Vertical);
    bar.setRange(0, 1000);
    bar.setPageStep(100);
    bar.resize(bar.sizeHint().width(), 220);
    const auto part = [&bar](QStyle::SubControl control) {
        QStyleOptionSlider option;
        option.initFrom(&bar);
        option.orientation = Qt::Vertical;
        option.minimum = bar.minimum();
        option.maximum = bar.maximum();
        option.pageStep = bar.pageStep();
        option.sliderPosition = bar.value();
        return bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, control, &bar);
    };
    EXPECT_EQ(part(QStyle::SC_ScrollBarSlider).top(), 0);
    EXPECT_EQ(part(QStyle::SC_ScrollBarSlider).height(), 28) << "never too small to be caught";
    bar.setValue(1000);
    EXPECT_EQ(part(QStyle::SC_ScrollBarSlider).bottom(), 219);
    bar.setValue(500);
    EXPECT_EQ(part(QStyle::SC_ScrollBarSubPage).height(), 96);
    EXPECT_EQ(part(QStyle::SC_ScrollBarAddPage).height(), 96);
    bar.setRange(0, 0);
    EXPECT_EQ(part(QStyle::SC_ScrollBarSlider), QRect(0, 0, bar.width(), 220));
}

INSTANTIATE_TEST_SUITE_P(All, SkinLook,
                         ::testing::Combine(::testing::ValuesIn(AllSkins()),
                                            ::testing::Values(Scheme::Light, Scheme::Dark)),
                         [](const auto& parameters) {
                             return NameOf(std::get<0>(parameters.param)) +
                                    (std::get<1>(parameters.param) == Scheme::Dark ? "Dark" : "Light");
                         });

} // namespace
} // namespace zetui::skins
