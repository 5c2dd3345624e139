#include "dialog/drawing/BoxView.h"

#include <QImage>
#include <QPainter>
#include <gmock/gmock.h>
#include <zetcore/utility/NullPtrException.h>
#include <zetui/pixmill/Path.h>
#include <zetui/pixmill/Pixmill.h>

#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

QColor ToQt(const zetui::pixmill::Color& color)
{
    return {color.red, color.green, color.blue, color.alpha};
}

/// Draws the view, which is 40 by 30 pixels large, on white.
QImage Draw(BoxView& view, const zetui::pixmill::SupplierInterface* supplier = nullptr)
{
    QImage image(40, 30, QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    zetui::pixmill::Pixmill context(&painter, supplier);
    view.UI_Draw(&context);
    return image;
}

QColor Blended(const QColor& color)
{
    QImage image(1, 1, QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter(&image).fillRect(0, 0, 1, 1, color);
    return image.pixelColor(0, 0);
}

void ExpectOutline(const QImage& image, const QColor& line)
{
    for (const QPoint& point : {QPoint(0, 0), QPoint(20, 0), QPoint(0, 15), QPoint(39, 15), QPoint(20, 29)})
        EXPECT_EQ(image.pixelColor(point).name(), Blended(line).name()) << point.x() << ", " << point.y();
    for (const QPoint& point : {QPoint(1, 1), QPoint(20, 1), QPoint(20, 15), QPoint(38, 28)})
        EXPECT_EQ(image.pixelColor(point).name(), QColor(Qt::white).name()) << point.x() << ", " << point.y();
}

class BoxViewInTheClassicSkin : public DialogFixture
{
  protected:
    BoxViewInTheClassicSkin() { view->UI_SetLocalRectF({10, 10, 40, 30}); }
    zetui::utility::IntrusivePtr<BoxView> view = zetui::utility::MakeIntrusive<BoxView>();
};

class BoxViewInTheV7Skin : public V7DialogFixture
{
  protected:
    BoxViewInTheV7Skin() { view->UI_SetLocalRectF({10, 10, 40, 30}); }
    zetui::utility::IntrusivePtr<BoxView> view = zetui::utility::MakeIntrusive<BoxView>();
};

TEST_F(BoxViewInTheClassicSkin, IsOutlinedOnWholePixelsInColour324)
{
    ExpectOutline(Draw(*view), ToQt(zetui::ui::GetColor(324)));
}

TEST_F(BoxViewInTheV7Skin, IsOutlinedOnWholePixelsInTheColourOfTables)
{
    ExpectOutline(Draw(*view), ToQt(zetui::skins::design::GetTableColor(zetui::ui::GetDefaultThemeProvider(),
                                                                        0, 2, false, {})));
}

/// Keeps the last path and the last pen that it has made.
struct KeepingSupplier : zetui::pixmill::SupplierInterface
{
    zetui::pixmill::PathP CreatePath() const override { return path = SupplierInterface::CreatePath(); }
    zetui::pixmill::PenP CreatePen(const zetui::pixmill::Color& color, float width) const override
    {
        return pen = SupplierInterface::CreatePen(color, width);
    }
    mutable zetui::pixmill::PathP path;
    mutable zetui::pixmill::PenP pen;
};

TEST_F(BoxViewInTheClassicSkin, ItsLineRunsThroughTheMiddlesOfItsOutermostPixels)
{
    const KeepingSupplier supplier;
    Draw(*view, &supplier);
    ASSERT_TRUE(supplier.path && supplier.pen);
    EXPECT_EQ(supplier.pen->width, 1);
    EXPECT_EQ(supplier.pen->color, zetui::ui::GetColor(324));
    using Segment = zetui::pixmill::Path::Segment;
    EXPECT_THAT(supplier.path->Segments(),
                ::testing::UnorderedElementsAre(
                    Segment{0.5F, 29.5F, 0.5F, 0.5F}, Segment{0.5F, 0.5F, 39.5F, 0.5F},
                    Segment{39.5F, 0.5F, 39.5F, 29.5F}, Segment{39.5F, 29.5F, 0.5F, 29.5F}));
}

struct WithoutPaths : zetui::pixmill::SupplierInterface
{
    zetui::pixmill::PathP CreatePath() const override { return nullptr; }
};

struct WithoutPens : zetui::pixmill::SupplierInterface
{
    zetui::pixmill::PenP CreatePen(const zetui::pixmill::Color&, float) const override { return nullptr; }
};

template<typename Supplier>
std::string ErrorOfDrawing(BoxView& view)
{
    const Supplier supplier;
    try {
        Draw(view, &supplier);
    } catch (const zetcore::utility::null_ptr_exception& error) {
        return error.what();
    }
    return {};
}

TEST_F(BoxViewInTheClassicSkin, ASupplierWithoutPathsOrPensRaisesTheErrorThatNamesThem)
{
    EXPECT_NE(ErrorOfDrawing<WithoutPaths>(*view).find("PathP"), std::string::npos);
    EXPECT_NE(ErrorOfDrawing<WithoutPens>(*view).find("PenP"), std::string::npos);
}

TEST_F(BoxViewInTheClassicSkin, DrawingOnNothingRaisesTheErrorThatNamesIt)
{
    try {
        view->UI_Draw(nullptr);
        ADD_FAILURE() << "no error";
    } catch (const zetcore::utility::null_ptr_exception& error) {
        EXPECT_NE(std::string(error.what()).find("Pixmill"), std::string::npos);
    }
}

} // namespace
} // namespace zetaudiopluginhostui
