#include "dialogs/TerminalText.h"

#include <gtest/gtest.h>

namespace zetui::dialogs {
namespace {

ProgressLine Line(std::string extra, unsigned long long progress, unsigned long long total)
{
    ProgressLine line;
    line.title = "Scanning Audio Plug-Ins";
    line.extraText = std::move(extra);
    line.progress = progress;
    line.total = total;
    return line;
}

TEST(TerminalText, ControlCharactersCannotReachTheTerminal)
{
    struct Case
    {
        const char* text;
        const char* printable;
    };
    for (const Case& each : {Case{"plain", "plain"},
                             {"\x1b[2Jcleared", " [2Jcleared"},
                             {"tab\tbell\a", "tab bell "},
                             {"two\nlines\r\n", "two lines  "},
                             {"C1 \xc2\x9b", "C1  "},
                             {"delete\x7f", "delete "},
                             {"bad \xff byte", "bad \xef\xbf\xbd byte"},
                             {"override \xe2\x80\xae", "override \xef\xbf\xbd"},
                             {"Gr\xc3\xbc\xc3\x9f", "Gr\xc3\xbc\xc3\x9f"}})
        EXPECT_EQ(PrintableText(each.text, false), each.printable);
}

TEST(TerminalText, LineFeedsStayWhereLinesAreWanted)
{
    EXPECT_EQ(PrintableText("two\nlines\x1b", true), "two\nlines ");
}

TEST(TerminalText, WidthCountsColumnsAndNotBytes)
{
    EXPECT_EQ(DisplayWidth(""), 0);
    EXPECT_EQ(DisplayWidth("abc"), 3);
    EXPECT_EQ(DisplayWidth("Gr\xc3\xbc\xc3\x9f"), 4);
    EXPECT_EQ(DisplayWidth("\xe9\x9f\xb3\xe9\x9f\xbf"), 4); // two ideographs
    EXPECT_EQ(DisplayWidth("e\xcc\x81"), 1);                // a combining accent
    EXPECT_EQ(DisplayWidth("\xf0\x9f\x8e\xb9"), 2);         // a picture
}

TEST(TerminalText, ElidesAtTheLeftSoThatTheFileNameStays)
{
    EXPECT_EQ(ElideLeft("/usr/lib/vst/reverb.so", 22), "/usr/lib/vst/reverb.so");
    EXPECT_EQ(ElideLeft("/usr/lib/vst/reverb.so", 15), "...st/reverb.so");
    EXPECT_EQ(ElideLeft("/usr/lib/vst/reverb.so", 3), "...");
    EXPECT_EQ(ElideLeft("/usr/lib/vst/reverb.so", 0), "");
    // A wide character is not cut in two.
    EXPECT_EQ(ElideLeft("\xe9\x9f\xb3\xe9\x9f\xbf\xe9\x9f\xb3", 5), "...\xe9\x9f\xb3");
    EXPECT_EQ(ElideLeft("\xe9\x9f\xb3\xe9\x9f\xbf\xe9\x9f\xb3", 4), "...");
}

TEST(TerminalText, ALineShowsTitleBarCountPercentageAndExtraText)
{
    EXPECT_EQ(FormatProgressLine(Line("/vst/reverb.so: Hall", 40, 160), 100),
              "Scanning Audio Plug-Ins  [#####---------------] 40/160  25%  /vst/reverb.so: Hall");
}

TEST(TerminalText, ABusyLineHasNoBar)
{
    EXPECT_EQ(FormatProgressLine(Line("starting", 0, 0), 100), "Scanning Audio Plug-Ins  starting");
}

TEST(TerminalText, ALineNeverFillsTheTerminal)
{
    const std::string path = "/a/very/long/path/to/some/folder/with/\xe9\x9f\xb3\xe9\x9f\xbf/plug-in.so";
    for (int columns = 1; columns < 130; ++columns) {
        for (const unsigned long long total : {0ull, 7ull, 100000ull}) {
            const std::string line = FormatProgressLine(Line(path, 7, total), columns);
            EXPECT_LE(DisplayWidth(line), std::max(columns - 1, 1)) << columns << ": " << line;
        }
    }
}

TEST(TerminalText, ANarrowLineGivesUpTheTitleFirstAndKeepsTheFileName)
{
    EXPECT_EQ(FormatProgressLine(Line("/usr/lib/vst/reverb.so", 1, 2), 60),
              "[##########----------] 1/2  50%  /usr/lib/vst/reverb.so");
    EXPECT_EQ(FormatProgressLine(Line("/usr/lib/vst/reverb.so", 1, 2), 30), "1/2  50%  ...ib/vst/reverb.so");
}

TEST(TerminalText, ProgressBeyondTheTotalIsAFullBar)
{
    EXPECT_EQ(FormatProgressLine(Line("", 9, 3), 50), "[####################] 9/3 100%");
}

TEST(TerminalText, APlainLineIsWholeWhateverItsLength)
{
    EXPECT_EQ(FormatPlainLine(Line("/usr/lib/vst/foo.so: sub", 3, 160)), "[3/160] /usr/lib/vst/foo.so: sub");
    EXPECT_EQ(FormatPlainLine(Line("a\nb", 3, 160)), "[3/160] a b");
    EXPECT_EQ(FormatPlainLine(Line("starting", 0, 0)), "starting");
}

TEST(TerminalText, TheBarStaysWhereItWasWhenTheCountsGoBack)
{
    ProgressLine line = Line("/vst/a.so", 1, 4);
    line.position.Move(2, 4);
    EXPECT_EQ(FormatProgressLine(line, 80),
              "Scanning Audio Plug-Ins  [##########----------] 1/4  50%  /vst/a.so");
    line.position.Fill();
    line.progress = 4;
    EXPECT_EQ(FormatProgressLine(line, 80),
              "Scanning Audio Plug-Ins  [####################] 4/4 100%  /vst/a.so");
}

TEST(TerminalText, APlainLineWithoutTextIsTheCount)
{
    EXPECT_EQ(FormatPlainLine(Line("", 4, 4)), "[4/4]");
}

} // namespace
} // namespace zetui::dialogs
