#include "string/UtfCodec.h"

#include <random>

#include <gtest/gtest.h>

namespace zetcore::string::codec {
namespace {

struct ValidCase
{
    const char* bytes;
    std::u32string codePoints;
};

const ValidCase validCases[] = {
    {"", U""},
    {"A", U"A"},
    {"\x7F", U"\x7F"},
    {"\xC2\x80", U"\x80"},
    {"\xDF\xBF", U"\x7FF"},
    {"\xE0\xA0\x80", U"\x800"},
    {"\xED\x9F\xBF", U"\xD7FF"},
    {"\xEE\x80\x80", U"\xE000"},
    {"\xEF\xBF\xBF", U"\xFFFF"},
    {"\xF0\x90\x80\x80", U"\x10000"},
    {"\xF4\x8F\xBF\xBF", U"\x10FFFF"},
    {"Stra\xC3\x9F"
     "e \xF0\x9F\x8E\xB9",
     U"Straße 🎹"},
};

TEST(UtfCodec, ValidTextHasItsCodePointsIn32BitUnits)
{
    for (const ValidCase& test : validCases) {
        EXPECT_EQ(FromUTF8<char32_t>(test.bytes), test.codePoints) << test.bytes;
        EXPECT_EQ(ToUTF8(std::u32string_view(test.codePoints)), test.bytes);
    }
}

TEST(UtfCodec, ValidTextGoesThrough16BitUnitsUnchanged)
{
    for (const ValidCase& test : validCases)
        EXPECT_EQ(ToUTF8(std::u16string_view(FromUTF8<char16_t>(test.bytes))), test.bytes);
    EXPECT_EQ(FromUTF8<char16_t>("\xF0\x9F\x8E\xB9"), u"\xD83C\xDFB9");
    EXPECT_EQ(FromUTF8<char16_t>("\xF4\x8F\xBF\xBF"), u"\xDBFF\xDFFF");
}

/// Each of these is invalid UTF-8 from its first byte to its last.
const std::string invalidBytes[] = {
    "\x80",             // a continuation byte alone
    "\xBF\xBF",         //
    "\xC0\x80",         // long forms of U+0000, "/", U+007F ...
    "\xC0\xAF",         //
    "\xC1\xBF",         //
    "\xE0\x80\xAF",     //
    "\xE0\x9F\xBF",     // ... U+07FF ...
    "\xF0\x80\x80\xAF", //
    "\xF0\x8F\xBF\xBF", // ... and U+FFFF
    "\xF4\x90\x80\x80", // above U+10FFFF
    "\xF5\x80\x80\x80", //
    "\xF8\x88\x80\x80\x80",
    "\xFC\x84\x80\x80\x80\x80",
    "\xFE",
    "\xFF\xFF",
    "\xC3",         // cut off
    "\xE2\x82",     //
    "\xF0\x9F\x8E", //
};

TEST(UtfCodec, BytesThatAreNotUTF8BecomeOneStrayUnitEachIn32Bits)
{
    for (const std::string& bytes : invalidBytes) {
        std::u32string expected;
        for (const char byte : bytes)
            expected.push_back(0xDC00 + static_cast<unsigned char>(byte));
        EXPECT_EQ(FromUTF8<char32_t>(bytes), expected) << testing::PrintToString(bytes);
        EXPECT_EQ(ToUTF8(std::u32string_view(expected)), bytes) << testing::PrintToString(bytes);
    }
}

TEST(UtfCodec, ValidTextAroundAStrayByteIsReadAsText)
{
    EXPECT_EQ(FromUTF8<char32_t>("a\xC3(\xC3\xA9"), (std::u32string{U'a', 0xDCC3, U'(', 0xE9}));
    EXPECT_EQ(FromUTF8<char32_t>("\xE2\x82\xE2\x82\xAC"), (std::u32string{0xDCE2, 0xDC82, 0x20AC}));
}

TEST(UtfCodec, ASurrogateInUTF8IsThreeStrayBytesIn32Bits)
{
    EXPECT_EQ(FromUTF8<char32_t>("\xED\xB2\x80"), (std::u32string{0xDCED, 0xDCB2, 0xDC80}));
    EXPECT_EQ(ToUTF8(std::u32string_view(std::u32string{0xDCED, 0xDCB2, 0xDC80})), "\xED\xB2\x80");
}

TEST(UtfCodec, AnUnpairedSurrogateIsItsThreeByteFormIn16BitsAndBack)
{
    for (char32_t surrogate = 0xD800; surrogate <= 0xDFFF; ++surrogate) {
        const std::u16string text{u'a', static_cast<char16_t>(surrogate), u'b'};
        const std::string bytes = ToUTF8(std::u16string_view(text));
        ASSERT_EQ(bytes.size(), 5u);
        ASSERT_EQ(FromUTF8<char16_t>(bytes), text);
    }
    EXPECT_EQ(ToUTF8(std::u16string_view(std::u16string{0xD800})), "\xED\xA0\x80");
    EXPECT_EQ(ToUTF8(std::u16string_view(std::u16string{0xDFFF})), "\xED\xBF\xBF");
}

TEST(UtfCodec, SixteenBitTextOfAnyUnitsSurvivesUTF8)
{
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        std::u16string text(random() % 12, u'\0');
        for (char16_t& unit : text)
            unit = static_cast<char16_t>(random() % 3 == 0 ? 0xD800 + random() % 0x800 : random());
        ASSERT_EQ(FromUTF8<char16_t>(ToUTF8(std::u16string_view(text))), text);
    }
}

TEST(UtfCodec, BytesThatAreNoTextAreMarkedIn16Bits)
{
    EXPECT_EQ(FromUTF8<char16_t>("a\xFF"
                                 "b"),
              u"a\xFFFD"
              u"b");
    EXPECT_EQ(FromUTF8<char16_t>("\xED\xA0"), u"\xFFFD\xFFFD");
}

TEST(UtfCodec, EveryByteSurvives32BitText)
{
    for (int value = 0; value < 256; ++value) {
        const std::string bytes(1, static_cast<char>(value));
        EXPECT_EQ(ToUTF8(std::u32string_view(FromUTF8<char32_t>(bytes))), bytes) << value;
    }
}

TEST(UtfCodec, RandomBytesSurvive32BitText)
{
    std::mt19937 random(11);
    for (int round = 0; round < 5000; ++round) {
        std::string bytes(random() % 24, '\0');
        for (char& byte : bytes) {
            // Most are bytes that begin or continue a sequence, because random bytes seldom make one.
            byte = static_cast<char>(random() % 4 == 0 ? random() : 0x80 + random() % 0x80);
        }
        ASSERT_EQ(ToUTF8(std::u32string_view(FromUTF8<char32_t>(bytes))), bytes)
            << testing::PrintToString(bytes);
    }
}

TEST(UtfCodec, SurrogatesAndValuesThatAreNoCodePointsDoNotBreak32BitText)
{
    EXPECT_EQ(ToUTF8(std::u32string_view(std::u32string{0xD800})), "\xED\xA0\x80");
    EXPECT_EQ(ToUTF8(std::u32string_view(std::u32string{0xDC7F})), "\xED\xB1\xBF");
    EXPECT_EQ(ToUTF8(std::u32string_view(std::u32string{0xDD00})), "\xED\xB4\x80");
    EXPECT_EQ(ToUTF8(std::u32string_view(std::u32string{0x110000})), "\xEF\xBF\xBD");
    EXPECT_EQ(ToUTF8(std::u32string_view(std::u32string{0xFFFFFFFF})), "\xEF\xBF\xBD");
}

TEST(UtfCodec, StrayUnitsAreUnpairedSurrogatesIn16Bits)
{
    const std::u16string text{u'a', 0xD83C, 0xDFB9, 0xD83C, u'b', 0xDFB9, 0xD83C};
    const bool expected[] = {false, false, false, true, false, true, true, false};
    for (std::size_t index = 0; index <= text.size(); ++index)
        EXPECT_EQ(IsStrayUnit(std::u16string_view(text), index), expected[index]) << index;
}

TEST(UtfCodec, StrayUnitsAreAllSurrogatesIn32Bits)
{
    const std::u32string text{U'a', 0xD83C, 0xDFB9, 0x1F3B9, 0x110000};
    const bool expected[] = {false, true, true, false, true, false};
    for (std::size_t index = 0; index <= text.size(); ++index)
        EXPECT_EQ(IsStrayUnit(std::u32string_view(text), index), expected[index]) << index;
}

TEST(UtfCodec, CodePointsAreReadWhole)
{
    const std::u16string text{0xD83C, 0xDFB9, 0xDFB9, u'a'};
    std::size_t index = 0;
    EXPECT_EQ(NextCodePoint(std::u16string_view(text), index), 0x1F3B9u);
    EXPECT_EQ(index, 2u);
    EXPECT_EQ(NextCodePoint(std::u16string_view(text), index), 0xDFB9u);
    EXPECT_EQ(NextCodePoint(std::u16string_view(text), index), U'a');
    EXPECT_EQ(NextCodePoint(std::u16string_view(text), index), 0u);
    EXPECT_EQ(index, 4u);
}

TEST(UtfCodec, AppendedCodePointsAreSplitIn16Bits)
{
    std::u16string narrow;
    std::u32string wide;
    for (const char32_t codePoint : {U'a', U'🎹', char32_t{0x110000}}) {
        AppendCodePoint(narrow, codePoint);
        AppendCodePoint(wide, codePoint);
    }
    EXPECT_EQ(narrow, (std::u16string{u'a', 0xD83C, 0xDFB9, 0xFFFD}));
    EXPECT_EQ(wide, (std::u32string{U'a', U'🎹', 0xFFFD}));
}

TEST(UtfCodec, ShownTextIsValidAndHasNoControlCharacters)
{
    EXPECT_EQ(
        ForDisplay(std::u32string_view(std::u32string{U'a', 0xDCFF, U'\n', 0x7F, 0x85, U'é', 0x110000})),
        (std::u32string{U'a', 0xFFFD, U' ', U' ', U' ', U'é', 0xFFFD}));
    EXPECT_EQ(ForDisplay(std::u16string_view(std::u16string{0xD83C, 0xDFB9, 0xD83C, u'\t'})),
              (std::u16string{0xD83C, 0xDFB9, 0xFFFD, u' '}));
}

} // namespace
} // namespace zetcore::string::codec
