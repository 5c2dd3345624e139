#include "archiveddialog/RoomForTexts.h"

#include <gtest/gtest.h>

#include "testing/PrintRect.h"

namespace zetui::ui {
namespace {

using RectF = zetcore::geom::RectT<float>;
using Items = std::vector<RoomItem>;
using Frames = std::vector<RectF>;

TEST(MakeRoom, WhatFitsStaysWhereItIs)
{
    const Items items = {{{0, 0, 40, 20}, {40, 20}}, {{50, 0, 40, 20}, {0, 0}}};
    const Room room = MakeRoom(items, {100, 20});
    EXPECT_EQ(room.frames, (Frames{items[0].frame, items[1].frame}));
    EXPECT_EQ(room.size, (LayoutSize{100, 20}));
}

TEST(MakeRoom, AWiderItemMovesWhatFollowsAndKeepsTheGaps)
{
    const Room room = MakeRoom(
        {{{0, 0, 40, 20}, {60, 20}}, {{50, 0, 40, 20}, {0, 0}}, {{95, 0, 40, 20}, {50, 0}}}, {140, 20});
    EXPECT_EQ(room.frames, (Frames{{0, 0, 60, 20}, {70, 0, 40, 20}, {115, 0, 50, 20}}));
    // The last one's margin of 5 stays.
    EXPECT_EQ(room.size, (LayoutSize{170, 20}));
}

TEST(MakeRoom, AWideGapIsUsedUpFirst)
{
    const Room room = MakeRoom({{{0, 0, 40, 20}, {70, 0}}, {{90, 0, 40, 20}, {0, 0}}}, {140, 20});
    EXPECT_EQ(room.frames, (Frames{{0, 0, 70, 20}, {90, 0, 40, 20}}));
    EXPECT_EQ(room.size.width, 140);
}

TEST(MakeRoom, AWideGapLeavesAComfortableRest)
{
    const Room room = MakeRoom({{{0, 0, 40, 20}, {85, 0}}, {{90, 0, 40, 20}, {0, 0}}}, {140, 20});
    EXPECT_EQ(room.frames[1].left, 97);
}

TEST(MakeRoom, TheMarginsOfAViewThatGrowsStayEven)
{
    // Two sections, one of which must grow: the other goes with the view, by its margin of 17.
    const Room room = MakeRoom({{{14, 0, 100, 20}, {150, 0}}}, {131, 20});
    EXPECT_EQ(room.size.width, 181);
    EXPECT_EQ(MakeRoom({{{0, 0, 40, 20}, {60, 0}}}, {100, 20}).size.width, 100);
    EXPECT_EQ(MakeRoom({{{0, 0, 40, 20}, {90, 0}}}, {100, 20}).size.width, 114);
}

TEST(MakeRoom, AnotherRowIsNotMoved)
{
    const Room room = MakeRoom({{{0, 0, 40, 20}, {80, 0}}, {{50, 20, 40, 20}, {0, 0}}}, {100, 40});
    EXPECT_EQ(room.frames[1], (RectF{50, 20, 40, 20}));
}

TEST(MakeRoom, AHigherItemGrowsAboutItsMiddle)
{
    const Room room = MakeRoom({{{0, 3, 40, 14}, {0, 16}}}, {100, 20});
    EXPECT_EQ(room.frames[0], (RectF{0, 2, 40, 16}));
    EXPECT_EQ(room.size, (LayoutSize{100, 20}));
}

TEST(MakeRoom, AHigherItemDoesNotLeaveTheViewAtTheTop)
{
    const Room room = MakeRoom({{{0, 0, 40, 10}, {0, 30}}}, {100, 20});
    EXPECT_EQ(room.frames[0], (RectF{0, 0, 40, 30}));
    EXPECT_EQ(room.size.height, 30);
}

TEST(MakeRoom, AHigherItemMovesWhatIsBelow)
{
    const Room room = MakeRoom({{{0, 0, 40, 10}, {0, 30}}, {{0, 12, 40, 10}, {0, 0}}}, {100, 22});
    EXPECT_EQ(room.frames[1], (RectF{0, 32, 40, 10}));
    EXPECT_EQ(room.size.height, 42);
}

TEST(MakeRoom, OrderInTheListDoesNotMatter)
{
    const Room room = MakeRoom({{{50, 0, 40, 20}, {0, 0}}, {{0, 0, 40, 20}, {60, 0}}}, {100, 20});
    EXPECT_EQ(room.frames, (Frames{{70, 0, 40, 20}, {0, 0, 60, 20}}));
}

TEST(MakeRoom, WhatSticksOutAlreadyStaysWhenItFits)
{
    const Room room = MakeRoom({{{80, 0, 40, 20}, {0, 0}}}, {100, 20});
    EXPECT_EQ(room.frames[0], (RectF{80, 0, 40, 20}));
    EXPECT_EQ(room.size.width, 100);
}

TEST(MakeRoom, AViewKeepsNoMoreBehindAnItemThanTheItemSays)
{
    EXPECT_EQ(MakeRoom({{{0, 0, 40, 20}, {90, 0}}}, {100, 20}).size.width, 114);
    EXPECT_EQ(MakeRoom({{{0, 0, 40, 20}, {98, 0}, {5, 5}}}, {100, 20}).size.width, 103);
    EXPECT_EQ(MakeRoom({{{0, 0, 40, 20}, {0, 30}, {0, 2}}}, {40, 30}).size.height, 32);
}

TEST(MakeRoom, AnEmptyViewKeepsItsSize)
{
    const Room room = MakeRoom({}, {100, 20});
    EXPECT_TRUE(room.frames.empty());
    EXPECT_EQ(room.size, (LayoutSize{100, 20}));
}

} // namespace
} // namespace zetui::ui
