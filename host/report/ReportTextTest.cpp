#include "report/ReportText.h"

#include <gtest/gtest.h>

namespace zetaudiopluginmanager {
namespace {

std::string Beginning(std::string_view lines, std::size_t mostBytes)
{
    ReportText text;
    text.Beginning(lines, mostBytes);
    return text.Text();
}

std::string BothEnds(std::string_view lines, std::size_t mostBytes)
{
    ReportText text;
    text.BothEnds(lines, mostBytes);
    return text.Text();
}

TEST(ReportText, SectionsFactsAndLinesFollowEachOther)
{
    ReportText text;
    text.Section("One");
    text.Fact("a", "b");
    text.Fact("nothing", "");
    text.Section("Two");
    text.Line("line");
    EXPECT_EQ(text.Text(), "== One ==\na: b\n\n== Two ==\nline\n");
}

TEST(ReportText, TheBeginningHasWholeLinesAndSaysHowManyAreMissing)
{
    EXPECT_EQ(Beginning("one\ntwo\nthree\n", 100), "one\ntwo\nthree\n");
    EXPECT_EQ(Beginning("one\ntwo", 7), "one\ntwo\n");
    EXPECT_EQ(Beginning("one\ntwo\nthree\n", 8), "one\ntwo\n[1 line is left out here]\n");
    EXPECT_EQ(Beginning("one\ntwo\nthree\n", 6), "one\n[2 lines are left out here]\n");
    EXPECT_EQ(Beginning("endless", 3), "end\n[1 line is left out here]\n");
    EXPECT_EQ(Beginning("", 3), "");
}

TEST(ReportText, BothEndsHaveWholeLinesAndSayHowManyAreMissingBetweenThem)
{
    EXPECT_EQ(BothEnds("one\ntwo\nthree", 100), "one\ntwo\nthree\n");
    EXPECT_EQ(BothEnds("one\ntwo\nthree\nfour\nfive\n", 12), "one\n[3 lines are left out here]\nfive\n");
    EXPECT_EQ(BothEnds("one\ntwo\nthree\nfour\n", 16), "one\ntwo\n[1 line is left out here]\nfour\n");
    EXPECT_EQ(BothEnds("endless", 4), "en\n[1 line is left out here]\nss\n");
    EXPECT_EQ(BothEnds("endless\n", 4), "en\n[1 line is left out here]\ns\n");
}

} // namespace
} // namespace zetaudiopluginmanager
