#include "controls/tree/NaturalOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace {

using zetui::controls::NaturalOrder;
using Texts = std::vector<std::wstring>;

const QLocale english(QLocale::English, QLocale::UnitedStates);

std::vector<int> Sorted(const NaturalOrder& order, const Texts& texts, bool ascending = true)
{
    return order.Sorted(
        static_cast<int>(texts.size()), [&](int index) { return texts[static_cast<std::size_t>(index)]; },
        ascending);
}

Texts InOrder(const NaturalOrder& order, const Texts& texts, bool ascending = true)
{
    Texts sorted;
    for (const int index : Sorted(order, texts, ascending))
        sorted.push_back(texts[static_cast<std::size_t>(index)]);
    return sorted;
}

/// What the collator alone does.
std::vector<int> SortedByCollator(const QLocale& locale, const Texts& texts)
{
    QCollator collator(locale);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::vector<int> indexes(texts.size());
    std::iota(indexes.begin(), indexes.end(), 0);
    std::stable_sort(indexes.begin(), indexes.end(), [&](int left, int right) {
        return collator.compare(QString::fromStdWString(texts[static_cast<std::size_t>(left)]),
                                QString::fromStdWString(texts[static_cast<std::size_t>(right)])) < 0;
    });
    return indexes;
}

Texts RandomTexts(const std::wstring& alphabet, int count, std::size_t longest)
{
    std::mt19937 random(20240229);
    Texts texts;
    for (int i = 0; i < count; ++i) {
        std::wstring text;
        for (std::size_t length = random() % (longest + 1); length > 0; --length)
            text.push_back(alphabet[random() % alphabet.size()]);
        texts.push_back(text);
    }
    return texts;
}

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

TEST(NaturalOrder, KeepsTheGivenOrderOfEqualTextsAcrossAlphabets)
{
    const NaturalOrder order(english);
    // Full-width letters are equal to plain ones but for their width.
    const Texts texts{L"\uff41", L"a", L"\uff21", L"A", L"b", L"c", L"d", L"e", L"f", L"g",
                      L"h",      L"i", L"j",      L"k", L"l", L"m", L"n", L"o", L"p", L"q",
                      L"r",      L"s", L"t",      L"u", L"v", L"w", L"x", L"y", L"z"};
    const std::vector<int> sorted = Sorted(order, texts);
    EXPECT_EQ(std::vector<int>(sorted.begin(), sorted.begin() + 4), (std::vector<int>{0, 1, 2, 3}));
}

TEST(NaturalOrder, OrdersPlainTextsExactlyAsTheCollatorDoes)
{
    std::wstring printable;
    for (wchar_t character = L' '; character < 127; ++character)
        printable.push_back(character);
    // The collator puts an empty text before one of characters that do not count.
    Texts withControls = RandomTexts(L"\t\n\x01\x1f"
                                     L"aB ",
                                     300, 6);
    for (std::wstring& text : withControls)
        text.insert(0, L"x");
    for (const QLocale::Language language :
         {QLocale::English, QLocale::German, QLocale::French, QLocale::Spanish, QLocale::Japanese}) {
        const QLocale locale(language);
        const NaturalOrder order(locale);
        EXPECT_TRUE(order.SortsAsciiByCharacter());
        for (const Texts& texts : {RandomTexts(printable, 400, 6), RandomTexts(L"aAbB019. -_", 400, 12),
                                   RandomTexts(L"0a", 200, 20), withControls})
            EXPECT_EQ(Sorted(order, texts), SortedByCollator(locale, texts)) << locale.name().toStdString();
    }
}

TEST(NaturalOrder, PutsTheFewTextsOfOtherLettersAmongThePlainOnes)
{
    const NaturalOrder order(english);
    Texts texts = RandomTexts(L"abcdeABCDE12 ", 500, 5);
    for (const std::wstring& other : RandomTexts(L"\u00e9\u00e0\u00fc\u4e2dae1", 40, 4))
        texts.insert(texts.begin() + static_cast<std::ptrdiff_t>(texts.size() / 3), other);
    EXPECT_EQ(Sorted(order, texts), SortedByCollator(english, texts));
}

TEST(NaturalOrder, SortsTextsThatAreMostlyOfOtherLetters)
{
    const NaturalOrder order(english);
    Texts texts = RandomTexts(L"\u00e9\u00e0\u00fc\u4e2d\u6587ae10", 300, 6);
    EXPECT_EQ(Sorted(order, texts), SortedByCollator(english, texts));
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
