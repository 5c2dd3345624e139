#include <zetui/pixmill/Pixmill.h>

#include <cmath>
#include <functional>
#include <limits>
#include <string>

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>
#include <zetcore/utility/NullPtrException.h>
#include <zetui/pixmill/Path.h>

#include "testing/WindowsFixture.h"

namespace zetui::pixmill {
namespace {

constexpr Color red{255, 0, 0, 255}, blue{0, 0, 255, 255};

class Drawing : public WindowsFixture
{
  protected:
    Drawing() { image.fill(Qt::white); }

    /// The part that is not white any more.
    QRect Ink() const
    {
        QRect ink;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixel(x, y) != qRgb(255, 255, 255))
                    ink |= QRect(x, y, 1, 1);
        return ink;
    }
    int CountOf(QRgb color) const
    {
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                count += image.pixel(x, y) == color;
        return count;
    }
    static std::string MessageOf(const std::function<void()>& call)
    {
        try {
            call();
        } catch (const zetcore::utility::null_ptr_exception& error) {
            return error.what();
        }
        return {};
    }

    QImage image{40, 30, QImage::Format_RGB32};
    QPainter painter{&image};
    Pixmill context{&painter, nullptr};
    const SupplierInterface& supplier = context.Supplier();
};

TEST_F(Drawing, ALineOfWidthOneOnHalfPixelsFillsWholePixels)
{
    const PathP path = supplier.CreatePath();
    utils::FormRect(path, {0.5f, 0.5f, 39, 29}, {true, true, true, true});
    painter.setRenderHint(QPainter::Antialiasing);
    context.StrokePath(path, supplier.CreatePen(red, 1));
    EXPECT_EQ(CountOf(qRgb(255, 0, 0)), 2 * 40 + 2 * 28);
    EXPECT_EQ(CountOf(qRgb(255, 255, 255)), 38 * 28);
}

TEST_F(Drawing, StrokesOnlyTheChosenEdges)
{
    const PathP path = supplier.CreatePath();
    utils::FormRect(path, {4.5f, 6.5f, 10, 10}, {false, true, false, false});
    context.StrokePath(path, supplier.CreatePen(red, 1));
    EXPECT_EQ(Ink(), QRect(4, 6, 11, 1));
}

TEST_F(Drawing, ARoundedRectangleLeavesItsCornersOut)
{
    context.FillRoundedRect({4, 6, 20, 10}, 4, red);
    EXPECT_EQ(Ink(), QRect(4, 6, 20, 10));
    EXPECT_EQ(image.pixelColor(14, 11), QColor(255, 0, 0));
    for (const QPoint& corner : {QPoint(4, 6), QPoint(23, 6), QPoint(4, 15), QPoint(23, 15)})
        EXPECT_GT(image.pixelColor(corner).green(), 100);
    EXPECT_EQ(painter.pen(), QPen());
    EXPECT_EQ(painter.brush(), QBrush());
}

TEST_F(Drawing, APenWithoutWidthDrawsNothing)
{
    const PathP path = supplier.CreatePath();
    path->AddLine(0, 5, 30, 5);
    for (const float width : {0.0f, -1.0f, std::numeric_limits<float>::quiet_NaN()})
        context.StrokePath(path, supplier.CreatePen(red, width));
    EXPECT_EQ(Ink(), QRect());
}

TEST_F(Drawing, NamesTheMissingObject)
{
    const PathP path = supplier.CreatePath();
    const PenP pen = supplier.CreatePen(red, 1);
    EXPECT_NE(MessageOf([&] { context.StrokePath(nullptr, pen); }).find("PathP"), std::string::npos);
    EXPECT_NE(MessageOf([&] { context.StrokePath(path, nullptr); }).find("PenP"), std::string::npos);
    EXPECT_NE(MessageOf([] { Pixmill without(nullptr, nullptr); }).find("QPainter"), std::string::npos);
}

TEST_F(Drawing, FillsARectangle)
{
    context.FillRect({3, 4, 5, 6}, blue);
    EXPECT_EQ(Ink(), QRect(3, 4, 5, 6));
    EXPECT_EQ(CountOf(qRgb(0, 0, 255)), 30);
}

TEST_F(Drawing, StaysInsideAClipUntilItEnds)
{
    {
        const Pixmill::Clip outer(context, {5, 5, 10, 10});
        const Pixmill::Clip inner(context, {10, 0, 40, 40});
        context.FillRect({0, 0, 40, 30}, blue);
    }
    EXPECT_EQ(Ink(), QRect(10, 5, 5, 10));
    context.FillRect({0, 0, 40, 30}, blue);
    EXPECT_EQ(Ink(), image.rect());
}

TEST_F(Drawing, TextStandsOnItsBaselineAtItsLeftEnd)
{
    context.DrawString(L"HH", {"", 12}, {0, 0, 0, 255}, 5, 20);
    const QRect ink = Ink();
    EXPECT_EQ(ink.bottom(), 19) << "a capital letter ends on the baseline";
    EXPECT_GE(ink.left(), 5);
    EXPECT_LE(ink.left(), 7);
    EXPECT_GE(ink.height(), 8);
    EXPECT_LE(ink.right(), 5 + static_cast<int>(GetTextWidth({"", 12}, L"HH")));
}

TEST_F(Drawing, TextLeavesThePainterAsItWas)
{
    const QPen pen(Qt::green, 3);
    painter.setPen(pen);
    const QFont font = painter.font();
    context.DrawString(L"text", {"", 20}, red, 0, 20);
    EXPECT_EQ(painter.pen(), pen);
    EXPECT_EQ(painter.font(), font);
}

TEST_F(Drawing, ABaselineCentresTheTextInItsCell)
{
    const Font font{"", 12};
    const float baseline = GetFontBaseline(font, 30);
    EXPECT_EQ(baseline, std::round(baseline));
    context.DrawString(L"\u00C5g", font, {0, 0, 0, 255}, 2, baseline);
    const QRect ink = Ink();
    EXPECT_NEAR(ink.center().y(), 14, 2);
    EXPECT_EQ(GetFontBaseline(font, 50) - baseline, 10);
}

TEST_F(Drawing, TextThatIsNoUnicodeIsDrawnWithoutHarm)
{
    context.DrawString(std::wstring(L"a") + wchar_t{0xDC80} + L"\n\x1b" + wchar_t{0xD800}, {"", 12}, red, 2,
                       20);
    EXPECT_FALSE(Ink().isEmpty());
    context.DrawString(L"a", {"No such font family", -5}, red, 2, 20);
    context.DrawString(L"a", {"", std::numeric_limits<float>::quiet_NaN()}, red, 2, 20);
}

TEST_F(Drawing, UsesTheHostsSupplier)
{
    class Host : public SupplierInterface
    {
      public:
        PenP CreatePen(const Color&, float) const override { return std::make_shared<Pen>(Pen{blue, 2}); }
    };
    const Host host;
    const Pixmill own(&painter, &host);
    EXPECT_EQ(&own.Supplier(), &host);
    EXPECT_EQ(own.Supplier().CreatePen(red, 1)->color, blue);
    EXPECT_TRUE(own.Supplier().CreatePath());
    EXPECT_EQ(&supplier, &DefaultSupplier());
}

} // namespace
} // namespace zetui::pixmill
