// The system's own functions are the collator here.
#include "tree/NaturalOrder.h"

#include <gtest/gtest.h>

#include "testing/SortedTexts.h"

namespace zetui::controls {
namespace {

TEST(NaturalOrder, PutsFullWidthLettersBehindPlainOnes)
{
    const NaturalOrder order(english);
    const Texts texts{L"\uff41", L"a", L"\uff21", L"A", L"b", L"c", L"d", L"e", L"f", L"g",
                      L"h",      L"i", L"j",      L"k", L"l", L"m", L"n", L"o", L"p", L"q",
                      L"r",      L"s", L"t",      L"u", L"v", L"w", L"x", L"y", L"z"};
    const std::vector<int> sorted = Sorted(order, texts);
    EXPECT_EQ(std::vector<int>(sorted.begin(), sorted.begin() + 4), (std::vector<int>{1, 3, 0, 2}));
}

TEST(NaturalOrder, SortsWordsOfManyAlphabetsAsTheCollatorDoes)
{
    const NaturalOrder order(english);
    // Two letters that sort alike, but for an accent, and letters of other kinds.
    const std::wstring letters = L"abeABE\u00e9\u00e0\u4e2d\u6587\u0436";
    const Texts texts = RandomTexts(letters, 300, 6);
    EXPECT_EQ(Sorted(order, texts), SortedByCollator(english, texts));
}

TEST(NaturalOrder, PutsTheFewWordsOfOtherLettersAmongThePlainOnes)
{
    const NaturalOrder order(english);
    Texts texts = RandomTexts(L"abcdeABCDE", 500, 5);
    for (const std::wstring& other : RandomTexts(L"\u00e9\u00e0\u00fc\u4e2dae", 40, 4))
        texts.insert(texts.begin() + static_cast<std::ptrdiff_t>(texts.size() / 3), other);
    EXPECT_EQ(Sorted(order, texts), SortedByCollator(english, texts));
}

} // namespace
} // namespace zetui::controls
