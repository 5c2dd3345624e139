#include "nodes/ReadingOrder.h"

#include <gmock/gmock.h>

namespace zetui::ui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(ReadingOrder, GoesLineByLineAndFromTheLeft)
{
    EXPECT_THAT(ReadingOrder({}), IsEmpty());
    EXPECT_THAT(ReadingOrder({{0, 100, 50, 20}, {0, 0, 50, 20}, {0, 50, 50, 20}}), ElementsAre(1, 2, 0));
    EXPECT_THAT(ReadingOrder({{60, 0, 50, 20}, {0, 0, 50, 20}, {120, 0, 50, 20}}), ElementsAre(1, 0, 2));
}

TEST(ReadingOrder, TakesControlsOfOneLineTogetherThoughTheirTopsDiffer)
{
    // A label that lies four pixels lower than the button right of it.
    EXPECT_THAT(ReadingOrder({{120, 0, 110, 24}, {0, 4, 110, 14}}), ElementsAre(1, 0));
    // A tall list beside two lines of buttons.
    EXPECT_THAT(ReadingOrder({{200, 0, 100, 20}, {200, 60, 100, 20}, {0, 0, 100, 80}}), ElementsAre(2, 0, 1));
}

TEST(ReadingOrder, KeepsTheOrderOfWhatLiesInOnePlace)
{
    EXPECT_THAT(ReadingOrder({{0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}}), ElementsAre(0, 1, 2));
}

} // namespace
} // namespace zetui::ui
