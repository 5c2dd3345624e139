#include "commands/ScanReport.h"

#include <gtest/gtest.h>

namespace zetaudiopluginmanager {

namespace {

TEST(ScanReport, SaysHowManyAndHowLong)
{
    ScanReport report;
    report.scanned = 1;
    report.found = 3;
    report.seconds = 0.126;
    EXPECT_EQ(FormatScanReport(report, {}),
              "1 plug-in file scanned in 0.13 s: 3 plug-ins found, 0 banned.\n");
    report.gone = 2;
    report.cancelled = true;
    EXPECT_EQ(FormatScanReport(report, {}), "1 plug-in file scanned in 0.13 s until the scan was cancelled: "
                                            "3 plug-ins found, 0 banned, 2 gone.\n");
}

TEST(ScanReport, NamesTheBannedOnesAndThoseThatGaveNothingWithTheReasons)
{
    ScanReport report;
    report.scanned = 3;
    report.banned = {{L"/p/bad\n.so", "signal 11\nlast words\x1b[0m"}};
    report.failed = {{L"/p/empty.so", "returned nothing"}};
    EXPECT_EQ(FormatScanReport(report, {}), "3 plug-in files scanned in 0.00 s: 0 plug-ins found, 1 banned.\n"
                                            "Banned: /p/bad .so\n"
                                            "    signal 11\n"
                                            "    last words [0m\n"
                                            "No plug-in: /p/empty.so\n"
                                            "    returned nothing\n");
}

TEST(ScanReport, OnlyTheProblemsAreSaidWhenThatIsAskedFor)
{
    ScanReport report;
    report.scanned = 3;
    report.found = 3;
    report.gone = 1;
    EXPECT_EQ(FormatScanReport(report, {false, true}), "");
    report.banned = {{L"/p/bad.so", "why"}};
    EXPECT_EQ(FormatScanReport(report, {false, true}), "Banned: /p/bad.so\n    why\n");
}

TEST(ScanReport, ReportsAddUp)
{
    ScanReport sum{1, 2, 0, {{L"/a", "x"}}, {}, 0.5, false, false, {}};
    EXPECT_TRUE(sum.IsComplete());
    sum.Add({2, 1, 1, {{L"/b", ""}}, {{L"/c", "y"}}, 0.25, true, true, {{L"/d", "z"}}});
    EXPECT_EQ(
        sum,
        (ScanReport{3, 3, 1, {{L"/a", "x"}, {L"/b", ""}}, {{L"/c", "y"}}, 0.75, true, true, {{L"/d", "z"}}}));
    EXPECT_FALSE(sum.IsComplete());
}

} // namespace

} // namespace zetaudiopluginmanager
