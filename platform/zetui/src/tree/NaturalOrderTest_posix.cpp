// ICU is the collator here.
#include "tree/NaturalOrder.h"

#include <gtest/gtest.h>

#include "testing/SortedTexts.h"

namespace zetui::controls {
namespace {

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

} // namespace
} // namespace zetui::controls
