#include <zetcore/string/TerminalText.h>

#include <gtest/gtest.h>
#include <zetcore/string/Utf.h>

namespace zetcore::string {
namespace {

std::string Harmless(std::string_view utf8, bool keepLines = false)
{
    return UTF16to8(ForTerminal(UTF8to16(utf8), keepLines));
}

TEST(TerminalText, NothingInItCommandsATerminal)
{
    struct Case
    {
        const char* text;
        const char* harmless;
    };
    for (const Case& each : {Case{"plain", "plain"},
                             {"", ""},
                             {"\x1b[2Jcleared", " [2Jcleared"},
                             {"tab\tbell\a", "tab bell "},
                             {"two\nlines\r\n", "two lines  "},
                             {"C1 \xc2\x9b", "C1  "},
                             {"delete\x7f", "delete "},
                             {"bad \xff byte", "bad \uFFFD byte"},
                             {"Arabic mark \u061C", "Arabic mark \uFFFD"},
                             {"mark \u200E", "mark \uFFFD"},
                             {"override \u202E", "override \uFFFD"},
                             {"isolate \u2066", "isolate \uFFFD"},
                             {"separators \u2028\u2029", "separators   "},
                             {"Gr\u00FC\u00DF \u65E5 \U0001F3B9", "Gr\u00FC\u00DF \u65E5 \U0001F3B9"}})
        EXPECT_EQ(Harmless(each.text), each.harmless);
}

TEST(TerminalText, LineFeedsStayWhereLinesAreWanted)
{
    EXPECT_EQ(Harmless("two\nlines\x1b\r", true), "two\nlines  ");
}

TEST(TerminalText, WidthCountsColumns)
{
    EXPECT_EQ(TerminalWidth(UTF8to16("")), 0);
    EXPECT_EQ(TerminalWidth(UTF8to16("Gr\u00FC\u00DF")), 4);
    EXPECT_EQ(TerminalWidth(UTF8to16("\u97F3\u97FF")), 4);
    EXPECT_EQ(TerminalWidth(UTF8to16("e\u0301")), 1);
    EXPECT_EQ(TerminalWidth(UTF8to16("\U0001F3B9")), 2);
}

TEST(TerminalText, RangesBeginAndEndWhereTheySay)
{
    struct Case
    {
        char32_t codePoint;
        int width;
    };
    for (const Case& each :
         {Case{0x02FF, 1}, {0x0300, 0},  {0x036F, 0},  {0x0370, 1}, {0x200A, 1}, {0x200B, 0}, {0x200D, 0},
          {0x200E, 1},     {0x10FF, 1},  {0x1100, 2},  {0x115F, 2}, {0x1160, 1}, {0x303E, 2}, {0x303F, 1},
          {0x3041, 2},     {0xD7A3, 2},  {0xD7A4, 1},  {0xFE0F, 0}, {0xFEFF, 0}, {0xFF60, 2}, {0xFF61, 1},
          {0x1F2FF, 1},    {0x1F300, 2}, {0x3FFFD, 2}, {0x3FFFE, 1}})
        EXPECT_EQ(TerminalWidth(each.codePoint), each.width)
            << std::hex << static_cast<unsigned>(each.codePoint);
}

} // namespace
} // namespace zetcore::string
