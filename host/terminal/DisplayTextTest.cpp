#include "terminal/DisplayText.h"

#include <gtest/gtest.h>

#include <zetcore/string/Utf.h>

namespace zetaudiopluginmanager {

namespace {

std::wstring Wide(std::string_view bytes)
{
    return zetcore::string::UTF8to16(bytes);
}

TEST(DisplayText, WhatATerminalWouldObeyIsNeutralised)
{
    const struct
    {
        std::string_view given, expected;
    } cases[] = {
        {"plain", "plain"},
        {"", ""},
        {"\x1b[31mred", " [31mred"},
        {"two\nlines\tand\rmore", "two lines and more"},
        {"bell\x07", "bell "},
        {"caf\u00e9 \u65e5\u672c", "caf\u00e9 \u65e5\u672c"},
        {"right\u202eleft", "right\uFFFDleft"},
        {"iso\u2066late", "iso\uFFFDlate"},
        {"csi\u009b31m", "csi 31m"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(ForTerminal(Wide(each.given)), each.expected);
}

TEST(DisplayText, LinesAreKeptApartAndEmptyOnesAtTheEndDropped)
{
    EXPECT_EQ(LinesForTerminal("one\r\ntwo \n\nthree\n\n"),
              (std::vector<std::string>{"one", "two", "", "three"}));
    EXPECT_EQ(LinesForTerminal(""), std::vector<std::string>());
    EXPECT_EQ(LinesForTerminal("a\x1b]0;title\x07"), std::vector<std::string>{"a ]0;title"});
}

#ifndef _WIN32
TEST(DisplayText, BytesThatAreNoUnicodeAreReplacedInTextsAndEscapedInPaths)
{
    const std::wstring text = Wide("a\xff"
                                   "b\x80");
    EXPECT_EQ(ForTerminal(text), "a\uFFFDb\uFFFD");
    EXPECT_EQ(ForJson(text), "a\uFFFDb\uFFFD");
    EXPECT_EQ(ForJson("x\xc3"), "x\uFFFD");
    EXPECT_EQ(PathForJson(text), "a%uDCFFb%uDC80");
}
#endif

TEST(DisplayText, PathsOfUnicodeStandAsTheyAreInJson)
{
    EXPECT_EQ(PathForJson(L"/a b/100%/x|y.so"), "/a b/100%/x|y.so");
    EXPECT_EQ(PathForJson(Wide("/\u00e9\U0001F3B9.so")), "/\u00e9\U0001F3B9.so");
    EXPECT_EQ(ForJson(L"line\nbreak"), "line\nbreak");
}

TEST(DisplayText, WidthCountsColumns)
{
    EXPECT_EQ(DisplayWidth(""), 0u);
    EXPECT_EQ(DisplayWidth("abc"), 3u);
    EXPECT_EQ(DisplayWidth("caf\u00e9"), 4u);
    EXPECT_EQ(DisplayWidth("cafe\u0301"), 4u);
    EXPECT_EQ(DisplayWidth("\u65e5\u672c"), 4u);
    EXPECT_EQ(DisplayWidth("\U0001F3B9"), 2u);
}

TEST(DisplayText, CutsAtEitherEndToTheWidth)
{
    const struct
    {
        std::string_view text;
        std::size_t width;
        std::string_view end, beginning;
    } cases[] = {
        {"abcdef", 6, "abcdef", "abcdef"},
        {"abcdef", 4, "abc\u2026", "\u2026def"},
        {"abcdef", 1, "\u2026", "\u2026"},
        {"abcdef", 0, "", ""},
        {"\u65e5\u672c\u8a9e", 4, "\u65e5\u2026", "\u2026\u8a9e"},
        {"\u65e5\u672c\u8a9e", 5, "\u65e5\u672c\u2026", "\u2026\u672c\u8a9e"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(CutEnd(each.text, each.width), each.end);
        EXPECT_EQ(CutBeginning(each.text, each.width), each.beginning);
    }
}

TEST(DisplayText, WrapsAtSpacesAndLongWordsAnywhere)
{
    using Lines = std::vector<std::string>;
    EXPECT_EQ(Wrap("one two three", 7), (Lines{"one two", "three"}));
    EXPECT_EQ(Wrap("one two three", 0), Lines{"one two three"});
    EXPECT_EQ(Wrap("abcdefgh", 3), (Lines{"abc", "def", "gh"}));
    EXPECT_EQ(Wrap("", 3), Lines{""});
    EXPECT_EQ(Wrap("\u65e5\u672c", 1), (Lines{"\u65e5", "\u672c"}));
}

} // namespace

} // namespace zetaudiopluginmanager
