#include <zetcore/string/UtfUnits.h>

#include <iterator>
#include <string>

#include <gtest/gtest.h>

namespace zetcore::string {
namespace {

using namespace std::string_literals;

// "a", U+00E9, U+65E5, U+1F3B9
const std::string text = "a\xC3\xA9\xE6\x97\xA5\xF0\x9F\x8E\xB9";

TEST(UtfUnits, LengthsAreThoseOfTheCharactersAndZeroInsideOfThem)
{
    const std::size_t lengths[] = {1, 2, 0, 3, 0, 0, 4, 0, 0, 0, 0};
    for (std::size_t index = 0; index < std::size(lengths); ++index)
        EXPECT_EQ(UTF8Length(text, index), lengths[index]) << index;
}

TEST(UtfUnits, OnlyWholeTextIsValid)
{
    EXPECT_TRUE(IsUTF8(""));
    EXPECT_TRUE(IsUTF8(text));
    EXPECT_TRUE(IsUTF8(std::string(1, '\0')));
    EXPECT_FALSE(IsUTF8(text.substr(0, text.size() - 1)));
    EXPECT_FALSE(IsUTF8(text + "\xFF" + text));
    EXPECT_FALSE(IsUTF8("\xED\xA0\x80"));
}

TEST(UtfUnits, CutsBytesBetweenCharacters)
{
    const std::size_t kept[] = {0, 1, 1, 3, 3, 3, 6, 6, 6, 6, 10, 10};
    for (std::size_t most = 0; most < std::size(kept); ++most)
        EXPECT_EQ(CutUTF8(text, most), text.substr(0, kept[most])) << most;
}

TEST(UtfUnits, AppendsWhatIsNoTextInThreeBytes)
{
    std::string bytes;
    for (const char32_t codePoint : {0x7F, 0x80, 0x7FF, 0x800, 0xFFFF, 0x10000, 0x10FFFF, 0xD800, 0x110000})
        AppendUTF8(bytes, codePoint);
    EXPECT_EQ(bytes, "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"
                     "\xED\xA0\x80\xEF\xBF\xBD");
}

TEST(UtfUnits, Utf16ComesBackAsItWas)
{
    EXPECT_EQ(ToUTF16Units(L"a\u00e9\u65e5\U0001f3b9"), u"a\u00e9\u65e5\xD83C\xDFB9");
    EXPECT_EQ(FromUTF16Units(u"a\u00e9\u65e5\xD83C\xDFB9"), L"a\u00e9\u65e5\U0001f3b9");
    for (const std::u16string& stray : {u"\xD83C"s, u"\xDFB9"s, u"\xDFB9\xD83C"s, u"a\xD83C b"s})
        EXPECT_EQ(ToUTF16Units(FromUTF16Units(stray)), stray);
}

TEST(UtfUnits, CutsUtf16BetweenPairs)
{
    const std::u16string units = u"a\xD83C\xDFB9\xDFB9\xD83C";
    const std::size_t kept[] = {0, 1, 1, 3, 4, 5, 5};
    for (std::size_t most = 0; most < std::size(kept); ++most)
        EXPECT_EQ(CutUTF16(units, most).size(), kept[most]) << most;
    EXPECT_EQ(CutUTF16(u"\xD83C"
                       u"a",
                       1),
              u"\xD83C");
}

} // namespace
} // namespace zetcore::string
