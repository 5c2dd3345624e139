// How a tree shows that it has the keyboard.
#include <QImage>

#include "pixmill/QtConversions.h"
#include "skins/SkinColors.h"
#include "testing/PrintSkin.h"
#include "testing/TreeFixture.h"

namespace zetui::controls {
namespace {

/// These tests run in each skin and scheme.
class TreeFocus : public TreeFixture,
                  public testing::WithParamInterface<std::tuple<skins::Skin, skins::Scheme>>
{
  protected:
    TreeFocus()
    {
        skins::SetSkin(std::get<0>(GetParam()));
        skins::SetScheme(std::get<1>(GetParam()));
        MakeColumns();
        tree->SetSupportUserSelectableCells(true);
    }
    /// The number of the list's pixels that people see change when the list gets the focus.
    int SeenOfTheFocus()
    {
        before.setFocus();
        const QImage without = view.grab().toImage();
        view.setFocus();
        EXPECT_TRUE(view.hasFocus());
        const QImage with = view.grab().toImage();
        int count = 0;
        for (int y = 0; y < with.height(); ++y)
            for (int x = 0; x < with.width(); ++x)
                count += skins::ContrastRatio(ColorAt(with, x, y), ColorAt(without, x, y)) >= 2;
        return count;
    }
    QImage Titles() const { return view.horizontalHeader()->grab().toImage(); }
    static pixmill::Color ColorAt(const QImage& image, int x, int y)
    {
        const QColor color = image.pixelColor(x, y);
        return {static_cast<std::uint8_t>(color.red()), static_cast<std::uint8_t>(color.green()),
                static_cast<std::uint8_t>(color.blue()), 255};
    }
};

TEST_P(TreeFocus, IsSeenWithoutRowsWithoutSelectionInARowAndInACell)
{
    Show();
    EXPECT_GE(SeenOfTheFocus(), 400) << "no rows";
    Fill(50);
    EXPECT_GE(SeenOfTheFocus(), 400) << "no selection";
    tree->SelectRow(tree->GetRowAt(2).get(), true);
    EXPECT_GE(SeenOfTheFocus(), 400) << "a row";
    const QImage row = view.grab().toImage();
    tree->SelectCell(tree->GetRowAt(2).get(), 1);
    EXPECT_GE(SeenOfTheFocus(), 200) << "a cell";
    EXPECT_NE(view.grab().toImage(), row);
}

TEST_P(TreeFocus, RowsEndWithALineOnlyInASkinThatHasRowLines)
{
    Show();
    Fill(4);
    before.setFocus();
    const QImage image = view.viewport()->grab().toImage();
    const skins::SkinColors& colors = skins::CurrentColors();
    const bool hasLines = skins::GetSkin() == skins::Skin::V7;
    for (int place = 0; place < 4; ++place) {
        const QColor row = pixmill::ToQt(place % 2 == 0 ? colors.base : colors.alternateBase);
        const int bottom = rowHeight * (place + 1) - 1;
        EXPECT_EQ(image.pixelColor(20, bottom), hasLines ? pixmill::ToQt(colors.gridLine) : row) << place;
        EXPECT_EQ(image.pixelColor(20, bottom - 1), row) << place;
        EXPECT_EQ(image.pixelColor(20, rowHeight * place), row) << place;
    }
}

TEST_P(TreeFocus, IsOneRingAroundAListWithoutRowsAndAroundOneThatIndicatesIt)
{
    Show();
    const auto drawsInside = [this] {
        before.setFocus();
        const QImage without = view.viewport()->grab().toImage(), titles = Titles();
        const QColor edge = view.grab().toImage().pixelColor(0, view.height() / 2);
        view.setFocus();
        EXPECT_NE(view.grab().toImage().pixelColor(0, view.height() / 2), edge);
        EXPECT_EQ(Titles(), titles);
        return view.viewport()->grab().toImage() != without;
    };
    EXPECT_FALSE(drawsInside()) << "the plug-in list";
    tree->SetIndicateFocus(true);
    EXPECT_FALSE(drawsInside()) << "the folder list";
    Fill(50);
    EXPECT_FALSE(drawsInside()) << "nothing is selected";
    tree->SelectRow(tree->GetRowAt(2).get(), true);
    EXPECT_TRUE(drawsInside()) << "a row";
}

TEST_P(TreeFocus, TheRowsReachItsFrameAtABrokenScale)
{
    constexpr double scale = 1.5;
    // A window of a colour of its own is seen through any gap.
    const QColor surface(1, 200, 3);
    QPalette palette = window.palette();
    palette.setColor(QPalette::Window, surface);
    window.setPalette(palette);
    Show();
    Fill(50);
    view.setFocus();
    for (const int corner : {30, 31, 32, 33}) {
        view.setGeometry(corner - 20, corner, 361, 223);
        QImage image((QSizeF(window.size()) * scale).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        window.render(&image);
        const QRectF onScreen(QPointF(view.pos()) * scale, QSizeF(view.size()) * scale);
        const QRect inside = onScreen.toRect().adjusted(1, 1, -1, -1);
        int gaps = 0;
        for (int y = inside.top(); y <= inside.bottom(); ++y)
            for (int x = inside.left(); x <= inside.right(); ++x)
                gaps += image.pixelColor(x, y) == surface;
        EXPECT_EQ(gaps, 0) << corner;
    }
}

TEST_P(TreeFocus, ItsFrameIsEvenAtEveryScaleAndPlace)
{
    Show();
    Fill(50);
    tree->SelectRow(tree->GetRowAt(2).get(), true);
    view.setFocus();
    const QRgb color = qRgb(skins::CurrentColors().focus.red, skins::CurrentColors().focus.green,
                            skins::CurrentColors().focus.blue);
    for (const double scale : {1.0, 1.25, 1.5, 2.0})
        for (const int corner : {30, 31, 32, 33}) {
            view.setGeometry(corner - 20, corner, 361, 223);
            QImage image((QSizeF(window.size()) * scale).toSize(), QImage::Format_RGB32);
            image.setDevicePixelRatio(scale);
            window.render(&image);
            // From outside, each side begins with the frame. The row's own frame is not on the way.
            const int x = static_cast<int>(scale * (corner + 150)),
                      y = static_cast<int>(scale * (corner + 150));
            const auto thickness = [&](int startX, int startY, int stepX, int stepY) {
                int count = 0, seen = 0;
                for (; image.valid(startX, startY); startX += stepX, startY += stepY) {
                    const bool isFrame = image.pixel(startX, startY) == color;
                    count += isFrame;
                    seen += isFrame || seen > 0;
                    if (seen > count)
                        break;
                }
                return count;
            };
            const std::vector<int> sides = {thickness(0, y, 1, 0), thickness(image.width() - 1, y, -1, 0),
                                            thickness(x, 0, 0, 1), thickness(x, image.height() - 1, 0, -1)};
            EXPECT_EQ(sides, std::vector<int>(4, static_cast<int>(scale))) << scale << ", " << corner;
        }
}

INSTANTIATE_TEST_SUITE_P(All, TreeFocus,
                         testing::Combine(testing::ValuesIn(skins::AllSkins()),
                                          testing::Values(skins::Scheme::Light, skins::Scheme::Dark)),
                         [](const auto& given) {
                             return NameOf(std::get<0>(given.param)) +
                                    (std::get<1>(given.param) == skins::Scheme::Dark ? "Dark" : "Light");
                         });

} // namespace
} // namespace zetui::controls
