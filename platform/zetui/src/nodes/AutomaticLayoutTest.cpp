#include "nodes/AutomaticLayout.h"

#include <gtest/gtest.h>

#include "testing/PrintRect.h"

namespace zetui::ui {
namespace {

using RectF = zetcore::geom::RectT<float>;

constexpr AutoLayout kStays{.enabled = true};
constexpr AutoLayout kNearerSide{.enabled = true, .horizontal = true, .maintainMargins = true};
constexpr AutoLayout kStack{.enabled = true, .maintainMargins = true, .scaleChildren = true};
constexpr AutoLayout kRow{
    .enabled = true, .horizontal = true, .maintainMargins = true, .scaleChildren = true};
constexpr AutoLayout kProportional{.enabled = true, .scaleChildren = true};

struct Case
{
    const char* name;
    AutoLayout layout;
    unsigned constraints;
    RectF frame, expected;

    friend void PrintTo(const Case& given, std::ostream* stream) { *stream << given.name; }
};

/// One child in a view that grows from 100 x 100 to 150 x 120.
class OneChild : public testing::TestWithParam<Case>
{};

TEST_P(OneChild, GoesWhereItBelongs)
{
    const Case& given = GetParam();
    const auto frames =
        LayOutChildren(given.layout, {100, 100}, {150, 120}, {{given.frame, given.constraints}});
    ASSERT_EQ(frames.size(), 1U);
    EXPECT_EQ(frames[0], given.expected);
}

INSTANTIATE_TEST_SUITE_P(
    AutomaticLayout, OneChild,
    testing::Values(
        Case{"staysWhenOff", {}, kConstraintRight | kConstraintBottom, {10, 10, 20, 20}, {10, 10, 20, 20}},
        Case{"staysWhenChildrenAreNotLaidOut",
             {.enabled = true, .scaleChildren = true, .layoutChildren = false},
             0,
             {10, 10, 20, 20},
             {10, 10, 20, 20}},
        Case{"staysWithoutFlags", kStays, 0, {70, 70, 20, 20}, {70, 70, 20, 20}},
        Case{"leftAndTopStay", kStack, kConstraintLeft | kConstraintTop, {70, 70, 20, 20}, {70, 70, 20, 20}},
        Case{"rightAndBottomMove",
             kStays,
             kConstraintRight | kConstraintBottom,
             {10, 10, 20, 20},
             {60, 30, 20, 20}},
        Case{"bothSidesStretch",
             kStays,
             kConstraintLeft | kConstraintRight | kConstraintTop | kConstraintBottom,
             {10, 10, 80, 80},
             {10, 10, 130, 100}},
        Case{"aFixedSizeHoldsTheFirstSide",
             kStays,
             kConstraintLeft | kConstraintRight | kConstraintFixedWidth,
             {10, 10, 80, 80},
             {10, 10, 80, 80}},
        Case{"rightWithAFixedWidthMoves",
             kStack,
             kConstraintRight | kConstraintFixedWidth | kConstraintTop | kConstraintFixedHeight,
             {70, 5, 20, 10},
             {120, 5, 20, 10}},
        Case{"nearTheFirstSidesItStays", kNearerSide, 0, {10, 10, 20, 20}, {10, 10, 20, 20}},
        Case{"nearTheLastSidesItMoves", kNearerSide, 0, {70, 70, 20, 20}, {120, 90, 20, 20}},
        Case{"inTheMiddleItStays", kNearerSide, 0, {40, 40, 20, 20}, {40, 40, 20, 20}},
        Case{"aloneItTakesAllTheGrowth", kStack, 0, {10, 10, 80, 80}, {10, 10, 130, 100}},
        Case{"aloneInARowToo", kRow, 0, {10, 10, 80, 80}, {10, 10, 130, 100}},
        Case{
            "aFixedHeightStaysInAStack", kStack, kConstraintFixedHeight, {10, 10, 80, 80}, {10, 10, 130, 80}},
        Case{"withoutMarginsEverythingScales", kProportional, 0, {10, 10, 80, 50}, {15, 12, 120, 60}},
        Case{"withoutMarginsFixedSizesStay",
             kProportional,
             kConstraintFixedWidth | kConstraintFixedHeight,
             {10, 10, 80, 50},
             {15, 12, 80, 50}}),
    [](const auto& test) { return test.param.name; });

TEST(AutomaticLayout, ChildrenOfAStackShareTheGrowthByTheirHeights)
{
    const auto frames =
        LayOutChildren(kStack, {100, 100}, {100, 160}, {{{0, 0, 100, 20}, 0}, {{0, 30, 100, 40}, 0}});
    EXPECT_EQ(frames[0], (RectF{0, 0, 100, 40}));
    EXPECT_EQ(frames[1], (RectF{0, 50, 100, 80}));
}

TEST(AutomaticLayout, FixedChildrenOfAStackMoveWithTheGrowthBeforeThem)
{
    // A title, a list that grows, and buttons below: as dialogs are made.
    const auto frames = LayOutChildren(kStack, {100, 100}, {120, 150},
                                       {{{0, 80, 100, 20}, kConstraintFixedHeight},
                                        {{0, 0, 100, 20}, kConstraintFixedHeight},
                                        {{0, 25, 100, 50}, 0}});
    EXPECT_EQ(frames[0], (RectF{0, 130, 120, 20}));
    EXPECT_EQ(frames[1], (RectF{0, 0, 120, 20}));
    EXPECT_EQ(frames[2], (RectF{0, 25, 120, 100}));
}

TEST(AutomaticLayout, WhatConstraintsStretchTakesTheGrowthAlone)
{
    const auto frames =
        LayOutChildren(kStack, {100, 100}, {100, 150},
                       {{{0, 0, 100, 20}, 0}, {{0, 20, 100, 80}, kConstraintTop | kConstraintBottom}});
    EXPECT_EQ(frames[0], (RectF{0, 0, 100, 20}));
    EXPECT_EQ(frames[1], (RectF{0, 20, 100, 130}));
}

TEST(AutomaticLayout, ChildrenSideBySideCountOnceInAStack)
{
    const auto frames = LayOutChildren(kStack, {100, 100}, {100, 150},
                                       {{{0, 0, 50, 50}, 0}, {{50, 0, 50, 50}, 0}, {{0, 50, 100, 50}, 0}});
    EXPECT_EQ(frames[0].height, 75);
    EXPECT_EQ(frames[1].height, 75);
    EXPECT_EQ(frames[2], (RectF{0, 75, 100, 75}));
}

TEST(AutomaticLayout, NothingGetsANegativeSize)
{
    for (const AutoLayout& layout : {kStays, kNearerSide, kStack, kRow, kProportional}) {
        const auto frames = LayOutChildren(
            layout, {100, 100}, {0, 0},
            {{{10, 10, 30, 30}, 0},
             {{60, 60, 30, 30}, kConstraintLeft | kConstraintRight | kConstraintTop | kConstraintBottom},
             {{45, 45, 10, 10}, kConstraintFixedWidth | kConstraintFixedHeight}});
        for (const RectF& frame : frames) {
            EXPECT_GE(frame.width, 0);
            EXPECT_GE(frame.height, 0);
        }
    }
}

TEST(AutomaticLayout, AViewThatWasEmptyKeepsItsChildren)
{
    const auto frames = LayOutChildren(kProportional, {0, 0}, {100, 100}, {{{1, 2, 3, 4}, 0}});
    EXPECT_EQ(frames[0], (RectF{1, 2, 3, 4}));
    EXPECT_TRUE(LayOutChildren(kStack, {0, 0}, {100, 100}, {}).empty());
}

constexpr unsigned kAtLeft = kConstraintLeft | kConstraintFixedWidth;
constexpr unsigned kAtRight = kConstraintRight | kConstraintFixedWidth;

/// A strip of buttons 200 wide, a label of 50 whose text needs 40, and a field of 150 that is of use at 100,
/// in a view 500 wide.
std::vector<RectF> Strip(float width)
{
    return LayOutChildren(kRow, {500, 20}, {width, 20},
                          {{{0, 0, 200, 20}, kAtLeft},
                           {{290, 0, 50, 20}, kAtRight, 40.0F},
                           {{344, 0, 150, 20}, kAtRight, 100.0F}});
}

TEST(GiveWay, TheFieldGetsTheRestBesideTheButtonsAndTheLabel)
{
    struct Widths
    {
        float width;
        RectF label, field;
    };
    for (const Widths& each :
         {Widths{520, {310, 0, 50, 20}, {364, 0, 150, 20}}, Widths{416, {206, 0, 50, 20}, {260, 0, 150, 20}},
          // The label gives the room around its text first.
          Widths{410, {206, 0, 44, 20}, {254, 0, 150, 20}}, Widths{376, {206, 0, 40, 20}, {250, 0, 120, 20}},
          Widths{356, {206, 0, 40, 20}, {250, 0, 100, 20}},
          // Now the label goes, and the field has its room.
          Widths{355, {145, 0, 50, 20}, {206, 0, 143, 20}}, Widths{312, {102, 0, 50, 20}, {206, 0, 100, 20}},
          // There is room for neither.
          Widths{311, {101, 0, 50, 20}, {155, 0, 150, 20}}}) {
        const auto frames = Strip(each.width);
        EXPECT_EQ(frames[0], (RectF{0, 0, 200, 20})) << each.width;
        EXPECT_EQ(frames[1], each.label) << each.width;
        EXPECT_EQ(frames[2], each.field) << each.width;
    }
}

TEST(GiveWay, WhatFindsNoRoomLiesBehindWhatIsThere)
{
    const auto frames = Strip(355);
    EXPECT_LE(frames[1].left + frames[1].width, 200);
}

TEST(GiveWay, OnlyInAHorizontalLayoutThatIsOn)
{
    const std::vector<LayoutChild> children{{{0, 0, 80, 20}, kAtLeft}, {{40, 0, 60, 20}, kAtRight, 10.0F}};
    EXPECT_EQ(GiveWay(kRow, children)[1], (RectF{86, 0, 14, 20}));
    EXPECT_EQ(GiveWay(kStack, children)[1], children[1].frame);
    EXPECT_EQ(GiveWay({.enabled = false, .horizontal = true}, children)[1], children[1].frame);
    EXPECT_EQ(GiveWay({.enabled = true, .horizontal = true, .layoutChildren = false}, children)[1],
              children[1].frame);
    EXPECT_EQ(GiveWay(kRow, {{{0, 0, 80, 20}, 0}, children[1]})[1], children[1].frame)
        << "nothing sticks to the left";
}

} // namespace
} // namespace zetui::ui
