#include "pixmill/PixelGrid.h"

#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>
#include <zetui/pixmill/Path.h>
#include <zetui/pixmill/Pixmill.h>

#include "testing/WindowsFixture.h"

namespace zetui::pixmill {
namespace {

constexpr QRgb dark = qRgb(0, 0, 0), bright = qRgb(255, 255, 255);
constexpr int side = 80;

class PixelGrid : public WindowsFixture
{
  protected:
    static QImage Draw(double scale, const std::function<void(QPainter&)>& draw)
    {
        QImage image(side, side, QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        image.fill(bright);
        QPainter painter(&image);
        draw(painter);
        return image;
    }
    /// The lengths of the dark runs from left to right, or from top to bottom. A frame across its middle has
    /// two.
    static std::vector<int> DarkRuns(const QImage& image, int middle, bool down)
    {
        std::vector<int> runs;
        bool wasDark = false;
        for (int i = 0; i < side; ++i) {
            const QRgb pixel = down ? image.pixel(middle, i) : image.pixel(i, middle);
            EXPECT_TRUE(pixel == dark || pixel == bright) << "blurred at " << i;
            const bool isDark = pixel == dark;
            if (isDark && !wasDark)
                runs.push_back(0);
            if (isDark)
                ++runs.back();
            wasDark = isDark;
        }
        return runs;
    }
};

TEST_F(PixelGrid, AFrameHasFourSidesOfOneWidthAtEveryScale)
{
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0})
        for (const double offset : {0.0, 1.0, 2.0, 3.0}) {
            const QImage image = Draw(scale, [&](QPainter& painter) {
                PaintFrame(painter, QRectF(offset, offset, 21, 19), Qt::black, 1);
            });
            const int middle = static_cast<int>(std::round((offset + 9) * scale));
            const std::vector<int> sides(2, static_cast<int>(scale));
            EXPECT_EQ(DarkRuns(image, middle, false), sides) << scale << ", " << offset;
            EXPECT_EQ(DarkRuns(image, middle, true), sides) << scale << ", " << offset;
        }
}

TEST_F(PixelGrid, ARectangleOfLinesHasFourSidesOfOneWidthToo)
{
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0})
        for (const float offset : {0.0F, 1.0F, 2.0F, 3.0F}) {
            const QImage image = Draw(scale, [&](QPainter& painter) {
                Pixmill context(&painter, nullptr);
                const PathP path = context.Supplier().CreatePath();
                utils::FormRect(path, {offset + 0.5F, offset + 0.5F, 20, 18}, {true, true, true, true});
                context.StrokePath(path, context.Supplier().CreatePen(Color{0, 0, 0, 255}, 1));
            });
            // It is the same frame as the other one, on the same pixels.
            const QImage frame = Draw(scale, [&](QPainter& painter) {
                PaintFrame(painter, QRectF(offset, offset, 21, 19), Qt::black, 1);
            });
            EXPECT_TRUE(image == frame) << scale << ", " << offset;
        }
}

TEST_F(PixelGrid, EdgesGoToTheNearestPixel)
{
    Draw(1.5, [](QPainter& painter) {
        EXPECT_EQ(OnWholePixels(painter, QRectF(2, 4, 2, 6)), QRectF(2, 4, 2, 6));
        const QRectF moved = OnWholePixels(painter, QRectF(1.2, 3, 2.2, 1));
        EXPECT_DOUBLE_EQ(moved.left() * 1.5, 2);
        EXPECT_DOUBLE_EQ(moved.top() * 1.5, 5);
        EXPECT_DOUBLE_EQ(moved.right() * 1.5, 5);
        EXPECT_DOUBLE_EQ(moved.bottom() * 1.5, 6);
    });
}

TEST_F(PixelGrid, AWidthIsWholeAndNeverMoreThanWasAskedFor)
{
    struct Row
    {
        double scale, width, onScreen;
    };
    for (const Row& row : {Row{1, 1, 1}, Row{1, 2, 2}, Row{1.25, 1, 1}, Row{1.25, 2, 2}, Row{1.5, 1, 1},
                           Row{1.5, 2, 3}, Row{1.75, 2, 3}, Row{2, 1, 2}, Row{2, 2, 4}, Row{1, 0.2, 1}})
        Draw(row.scale, [&](QPainter& painter) {
            EXPECT_DOUBLE_EQ(WholeWidth(painter, row.width) * row.scale, row.onScreen)
                << row.scale << ", " << row.width;
        });
}

} // namespace
} // namespace zetui::pixmill
