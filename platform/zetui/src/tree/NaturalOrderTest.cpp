#include "tree/NaturalOrder.h"

#include <gtest/gtest.h>

#include "testing/SortedTexts.h"

namespace zetui::controls {
namespace {

TEST(NaturalOrder, SortsNamesAndVersionsAsPeopleExpect)
{
    const NaturalOrder order(english);
    const std::vector<Texts> expectedOrders{
        {L"", L"1", L"a"},
        {L"2.9", L"2.10", L"2.11", L"10.0"},
        {L"1.2", L"1.2.3", L"1.10"},
        {L"Comp 2", L"Comp 10", L"Comp 100", L"Compressor"},
        {L"alpha", L"Beta", L"gamma"},
        {L"Echo", L"\u00c9cho B", L"Echo C"},
        {L"cote", L"cot\u00e9", L"coter"},
        {L"-", L"1.0", L"Not Working", L"Working"},
        {L"a b", L"ab"},
        {L"Verb 99999999999999999999", L"Verb 100000000000000000000"},
        {L"1", L"2"},
    };
    for (const Texts& expected : expectedOrders) {
        Texts shuffled(expected.rbegin(), expected.rend());
        EXPECT_EQ(InOrder(order, shuffled), expected);
        std::reverse(shuffled.begin(), shuffled.end());
        EXPECT_EQ(InOrder(order, shuffled, false), Texts(expected.rbegin(), expected.rend()));
    }
}

TEST(NaturalOrder, KeepsTheGivenOrderOfEqualTextsInBothDirections)
{
    const NaturalOrder order(english);
    const Texts texts{L"b", L"REVERB", L"reverb", L"v007", L"Reverb", L"V7", L"a"};
    EXPECT_EQ(Sorted(order, texts), (std::vector<int>{6, 0, 1, 2, 4, 3, 5}));
    EXPECT_EQ(Sorted(order, texts, false), (std::vector<int>{3, 5, 1, 2, 4, 0, 6}));
}

TEST(NaturalOrder, FollowsLocalesInWhichTwoLettersAreOne)
{
    const NaturalOrder order{QLocale(QLocale::Czech)};
    EXPECT_FALSE(order.SortsAsciiByCharacter());
    EXPECT_EQ(InOrder(order, {L"chorus", L"delay", L"hall", L"comp"}),
              (Texts{L"comp", L"delay", L"hall", L"chorus"}));
}

TEST(NaturalOrder, SurvivesTextsThatAreNoUnicodeAndVeryLongOnes)
{
    const NaturalOrder order(english);
    const std::wstring stray{L'a', static_cast<wchar_t>(0xD800), L'b'};
    const std::wstring longText(100000, L'x');
    const std::wstring longNumber(100000, L'9');
    const Texts texts{longText + L"b", longText + L"a", stray, longNumber + L"9", longNumber, longText};
    const std::vector<int> sorted = Sorted(order, texts);
    ASSERT_EQ(sorted.size(), texts.size());
    const auto placeOf = [&](int index) {
        return std::find(sorted.begin(), sorted.end(), index) - sorted.begin();
    };
    EXPECT_LT(placeOf(4), placeOf(3));
    EXPECT_LT(placeOf(5), placeOf(1));
    EXPECT_LT(placeOf(1), placeOf(0));
}

TEST(NaturalOrder, AsksForEachTextOnce)
{
    const NaturalOrder order(english);
    std::vector<int> asked(1000);
    order.Sorted(
        1000,
        [&](int index) {
            ++asked[static_cast<std::size_t>(index)];
            return std::to_wstring(index * 7919 % 1000) + (index % 50 == 0 ? L"\u00e9" : L"");
        },
        true);
    EXPECT_EQ(asked, std::vector<int>(1000, 1));
}

TEST(NaturalOrder, SortsNothing)
{
    EXPECT_TRUE(Sorted(NaturalOrder(english), {}).empty());
}

TEST(NaturalOrder, NeverTakesTheLocaleThatKnowsNoNumbers)
{
    EXPECT_NE(NaturalOrder::UserLocale().language(), QLocale::C);
}

} // namespace
} // namespace zetui::controls
