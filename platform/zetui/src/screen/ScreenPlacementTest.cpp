#include "screen/ScreenPlacement.h"

#include <limits>

#include <gtest/gtest.h>

#include "testing/PrintRect.h"

namespace zetui::ui {
namespace {

using RectI = zetcore::geom::RectT<int>;

const std::vector<RectI> oneScreen = {{0, 0, 1000, 800}};
const std::vector<RectI> twoScreens = {{0, 0, 1000, 800}, {1000, 0, 1000, 800}};

TEST(ScreenPlacement, AVisibleWindowStays)
{
    EXPECT_EQ(KeepOnScreen({100, 100, 400, 300}, oneScreen), (RectI{100, 100, 400, 300}));
}

TEST(ScreenPlacement, AWindowThatCanBeTakenHoldOfStays)
{
    const RectI mostlyOutside{900, 700, 400, 300};
    EXPECT_EQ(KeepOnScreen(mostlyOutside, oneScreen), mostlyOutside);
}

TEST(ScreenPlacement, AWindowBesideTheScreenComesBack)
{
    EXPECT_EQ(KeepOnScreen({1500, 100, 400, 300}, oneScreen), (RectI{600, 100, 400, 300}));
    EXPECT_EQ(KeepOnScreen({-900, 100, 400, 300}, oneScreen), (RectI{0, 100, 400, 300}));
}

TEST(ScreenPlacement, AWindowWhoseTitleIsAboveTheScreenComesBack)
{
    EXPECT_EQ(KeepOnScreen({100, -200, 400, 300}, oneScreen), (RectI{100, 32, 400, 300}));
}

TEST(ScreenPlacement, AWindowBelowTheScreenComesBack)
{
    EXPECT_EQ(KeepOnScreen({100, 2000, 400, 300}, oneScreen), (RectI{100, 500, 400, 300}));
}

TEST(ScreenPlacement, AWindowOfAScreenThatIsGoneComesToTheNearest)
{
    EXPECT_EQ(KeepOnScreen({2500, 100, 400, 300}, twoScreens), (RectI{1600, 100, 400, 300}));
}

TEST(ScreenPlacement, AWindowAcrossTwoScreensStays)
{
    const RectI across{800, 100, 400, 300};
    EXPECT_EQ(KeepOnScreen(across, twoScreens), across);
}

TEST(ScreenPlacement, AWindowThatIsMovedBecomesNoLargerThanItsScreen)
{
    EXPECT_EQ(KeepOnScreen({5000, 5000, 3000, 3000}, oneScreen), (RectI{0, 32, 1000, 768}));
}

TEST(ScreenPlacement, AnyNumbersAreTaken)
{
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int most = std::numeric_limits<int>::max();
    EXPECT_EQ(KeepOnScreen({most, most, most, most}, oneScreen), (RectI{0, 32, 1000, 768}));
    EXPECT_EQ(KeepOnScreen({least, least, 400, 300}, oneScreen), (RectI{0, 32, 400, 300}));
}

TEST(ScreenPlacement, WithoutScreensNothingMoves)
{
    EXPECT_EQ(KeepOnScreen({-5000, 0, 10, 10}, {}), (RectI{-5000, 0, 10, 10}));
}

TEST(ScreenPlacement, TheMiddleOfAScreenLeavesRoomForATitleBarAndNothingSticksOut)
{
    EXPECT_EQ(InMiddleOf({0, 0, 1000, 800}, 400, 300), (RectI{300, 266, 400, 300}));
    EXPECT_EQ(InMiddleOf({1000, 40, 1000, 760}, 400, 300), (RectI{1300, 286, 400, 300}));
    EXPECT_EQ(InMiddleOf({0, 40, 1000, 760}, 3000, 2000), (RectI{0, 72, 1000, 728}));
}

} // namespace
} // namespace zetui::ui
