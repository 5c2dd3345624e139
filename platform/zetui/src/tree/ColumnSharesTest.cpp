#include "tree/ColumnShares.h"

#include <gmock/gmock.h>

namespace zetui::controls {
namespace {

using ::testing::ElementsAre;
using Kind = ColumnShare::Kind;

/// A checkbox, a name and a path, which gives way.
std::vector<int> Share(int name, int path, int room)
{
    return ShareWidths({{80}, {name, Kind::Usual}, {path, Kind::GivesWay}}, room, 60);
}

TEST(ColumnShares, ColumnsWithRoomAreAsWideAsTheyAre)
{
    EXPECT_THAT(Share(200, 500, 780), ElementsAre(80, 200, 500));
    EXPECT_THAT(Share(200, 500, 2000), ElementsAre(80, 200, 500));
    EXPECT_THAT(Share(900, 500, 1480), ElementsAre(80, 900, 500)) << "a long name hurts nobody there";
    EXPECT_TRUE(ShareWidths({}, 100, 120).empty());
}

TEST(ColumnShares, ThePathGivesWayAndNotTheName)
{
    EXPECT_THAT(Share(200, 500, 700), ElementsAre(80, 200, 420));
    EXPECT_THAT(Share(350, 500, 670), ElementsAre(80, 350, 240));
    EXPECT_THAT(Share(200, 500, 400), ElementsAre(80, 200, 120)) << "and more where that is needed";
    EXPECT_THAT(Share(200, 50, 300), ElementsAre(80, 200, 50)) << "it is short already";
}

TEST(ColumnShares, OneVeryLongNameDoesNotPushTheOthersAway)
{
    EXPECT_THAT(Share(3000, 500, 1000), ElementsAre(80, 680, 240));
    EXPECT_THAT(Share(3000, 500, 600), ElementsAre(80, 280, 240));
    EXPECT_THAT(Share(3000, 500, 500), ElementsAre(80, 280, 140));
    EXPECT_THAT(Share(3000, 500, 300), ElementsAre(80, 280, 60)) << "the rest must be scrolled to";
}

TEST(ColumnShares, WhatIsToKeepItsWidthKeepsIt)
{
    EXPECT_THAT(ShareWidths({{3000}, {500}}, 300, 120), ElementsAre(3000, 500));
}

} // namespace
} // namespace zetui::controls
