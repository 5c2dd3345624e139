#include "scan/ScanReport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zetaudiopluginmanager {

namespace {

using testing::HasSubstr;
using testing::Not;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;
using zetaudiopluginhostui::ScanEnd;

ChangedPlugin PluginAt(const std::wstring& path, const std::string& reason = {})
{
    return {PluginLocator(TechnologyType::VST, path), L"Name of " + path, reason};
}

TEST(ScanReport, SaysHowManyAndHowLong)
{
    ScanReport report;
    report.scanned = 1;
    report.found = 3;
    report.seconds = 0.126;
    EXPECT_EQ(FormatScanReport(report, {}),
              "1 plug-in file scanned in 0.13 s: 3 plug-ins found, 0 banned.\n");
    report.changes.removed = {PluginAt(L"/a"), PluginAt(L"/b")};
    report.end.how = ScanEnd::How::Cancelled;
    EXPECT_THAT(FormatScanReport(report, {}),
                testing::StartsWith("1 plug-in file scanned in 0.13 s until the scan was cancelled: "
                                    "3 plug-ins found, 0 banned, 2 gone.\n"));
}

TEST(ScanReport, NamesTheBannedOnesAndThoseThatGaveNothingWithTheReasons)
{
    ScanReport report;
    report.scanned = 3;
    report.changes.banned = {PluginAt(L"/p/bad\n.so", "signal 11\nlast words\x1b[0m")};
    report.changes.unreadable = {PluginAt(L"/p/locked.so", "Permission denied")};
    report.failed = {{L"/p/empty.so", "returned nothing"}};
    report.triedAgain = {{PluginAt(L"/p/worse.so"), true}, {PluginAt(L"/p/better.so"), false}};
    EXPECT_EQ(FormatScanReport(report, {}), "3 plug-in files scanned in 0.00 s: 0 plug-ins found, 1 banned.\n"
                                            "Banned: /p/bad .so\n"
                                            "    signal 11\n"
                                            "    last words [0m\n"
                                            "Tried again, still banned: /p/worse.so\n"
                                            "Tried again, not banned any more: /p/better.so\n"
                                            "No plug-in: /p/empty.so\n"
                                            "    returned nothing\n"
                                            "Cannot be read: /p/locked.so\n"
                                            "    Permission denied\n");
}

TEST(ScanReport, ABannedOneThatWasTriedInVainIsToldOnceWithItsReason)
{
    ScanReport report;
    report.scanned = 2;
    report.changes.banned = {PluginAt(L"/new", "signal 6"), PluginAt(L"/old", "signal 11")};
    report.triedAgain = {{PluginAt(L"/old", "signal 11"), true}};
    EXPECT_EQ(FormatScanReport(report, {}), "2 plug-in files scanned in 0.00 s: 0 plug-ins found, 2 banned.\n"
                                            "Banned: /new\n    signal 6\n"
                                            "Tried again, still banned: /old\n    signal 11\n");
}

TEST(ScanReport, TheLastParagraphSaysWhatHasChanged)
{
    ScanReport report;
    report.scanned = 13;
    report.found = 13;
    for (int number = 10; number < 22; ++number)
        report.changes.added.push_back(PluginAt(L"/n" + std::to_wstring(number)));
    report.changes.updated = {PluginAt(L"/u")};
    report.changes.removed = {PluginAt(L"/g"), PluginAt(L"/h", "why")};
    report.changes.unreached = {PluginAt(L"/w", "why")};
    const std::string text = FormatScanReport(report, {});
    EXPECT_THAT(text, HasSubstr(" 2 gone.\n\nNew: 12 plug-ins\n    Name of /n10  /n10\n"));
    EXPECT_THAT(text,
                HasSubstr("    Name of /n19  /n19\n    and 2 more\nUpdated: 1 plug-in\n    Name of /u  /u\n"
                          "Gone: 2 plug-ins\n    Name of /g  /g\n    Name of /h  /h\n        why\n"
                          "Not scanned: 1 plug-in; the next scan tries again\n"));
    report.end.how = ScanEnd::How::GaveUp;
    EXPECT_THAT(FormatScanReport(report, {}),
                HasSubstr("Not scanned: 1 plug-in; what was in the list stays in it as it was\n"));
    report.end.how = ScanEnd::How::NotStarted;
    EXPECT_THAT(FormatScanReport(report, {}), testing::StartsWith("New: 12")) << "nothing was scanned";
}

TEST(ScanReport, FilesThatArePassedOverAreNamedWithTheReason)
{
    ScanReport report;
    report.scanned = 12;
    report.changes.passedOver = {PluginAt(L"/notes.so", "a text\nfile")};
    EXPECT_THAT(
        FormatScanReport(report, {}),
        testing::EndsWith("0 banned.\n\nPassed over: 1 file, no plug-in for this system or left out on "
                          "purpose; looked at again when it changes\n    Name of /notes.so  /notes.so\n      "
                          "  a text\n        file\n"));
    for (int number = 10; number < 21; ++number)
        report.changes.passedOver.push_back(PluginAt(L"/n" + std::to_wstring(number)));
    EXPECT_THAT(
        FormatScanReport(report, {}),
        testing::AllOf(HasSubstr("\nPassed over: 12 files, no plug-in"),
                       testing::EndsWith("/n18\n    and 2 more ('zetaudiopluginmanager report -' names "
                                         "them)\n")));
    EXPECT_EQ(FormatScanReport(report, {.onlyProblems = true}), "");
}

TEST(ScanReport, OnlyTheProblemsAreSaidWhenThatIsAskedFor)
{
    ScanReport report;
    report.scanned = 3;
    report.found = 3;
    report.changes.added = {PluginAt(L"/n")};
    report.changes.updated = {PluginAt(L"/u")};
    report.triedAgain = {{PluginAt(L"/p/better.so"), false}};
    EXPECT_EQ(FormatScanReport(report, {false, true}), "");
    report.changes.banned = {PluginAt(L"/p/bad.so", "why")};
    report.changes.removed = {PluginAt(L"/g")};
    EXPECT_EQ(FormatScanReport(report, {false, true}),
              "Banned: /p/bad.so\n    why\n\nGone: 1 plug-in\n    Name of /g  /g\n");
}

TEST(ScanReport, NoProblemIsLeftOutWhenOnlyTheProblemsAreAskedFor)
{
    ScanReport report;
    report.changes.banned = {PluginAt(L"/bad", "why")};
    report.triedAgain = {{PluginAt(L"/worse"), true}};
    report.failed = {{L"/failed", "nothing"}};
    report.changes.unreadable = {PluginAt(L"/locked", "denied")};
    report.changes.removed = {PluginAt(L"/gone")};
    report.changes.unreached = {PluginAt(L"/left")};
    EXPECT_EQ(FormatScanReport(report, {false, true}),
              "Banned: /bad\n    why\nTried again, still banned: /worse\nNo plug-in: /failed\n    nothing\n"
              "Cannot be read: /locked\n    denied\n\nGone: 1 plug-in\n    Name of /gone  /gone\n"
              "Not scanned: 1 plug-in; the next scan tries again\n");
}

TEST(ScanReport, TheAdviceForBannedOnesComesOnceAndBelowThem)
{
    const std::string advice =
        "A banned plug-in is not used until it passes a scan. It is scanned again when its file changes, and "
        "by\n    zetaudiopluginmanager reload PLUGIN-FILE   (or --all)\n";
    const auto format = [](const ScanReport& report, bool onlyProblems = false) {
        return FormatScanReport(report, {.onlyProblems = onlyProblems, .withAdvice = true});
    };
    ScanReport report;
    report.failed = {{L"/empty", "nothing"}};
    report.triedAgain = {{PluginAt(L"/better"), false}};
    EXPECT_THAT(format(report), Not(HasSubstr(advice))) << "nothing is banned";

    ScanReport worse = report;
    worse.triedAgain.push_back({PluginAt(L"/worse"), true});
    EXPECT_THAT(format(worse), HasSubstr("still banned: /worse\n" + advice + "No plug-in: /empty\n"));

    report.changes.banned = {PluginAt(L"/bad", "why"), PluginAt(L"/worst")};
    EXPECT_THAT(format(report),
                HasSubstr("Banned: /worst\nTried again, not banned any more: /better\n" + advice));
    EXPECT_EQ(format(report).find(advice), format(report).rfind(advice));
    EXPECT_THAT(format(report, true), Not(HasSubstr(advice)));
    EXPECT_THAT(FormatScanReport(report, {}), Not(HasSubstr(advice)));
}

TEST(ScanReport, ReportsAddUp)
{
    ScanReport sum;
    sum.scanned = 1;
    sum.found = 2;
    sum.seconds = 0.5;
    sum.changes.banned = {PluginAt(L"/a", "x")};
    EXPECT_TRUE(sum.IsComplete());
    ScanReport other;
    other.scanned = 2;
    other.found = 1;
    other.seconds = 0.25;
    other.failed = {{L"/c", "y"}};
    other.end = {ScanEnd::How::GaveUp, "why"};
    other.changes.banned = {PluginAt(L"/b")};
    other.changes.unreached = {PluginAt(L"/d", "z")};
    other.triedAgain = {{PluginAt(L"/b"), true}};
    sum.Add(other);
    ScanReport expected = other;
    expected.scanned = 3;
    expected.found = 3;
    expected.seconds = 0.75;
    expected.changes.banned = {PluginAt(L"/a", "x"), PluginAt(L"/b")};
    EXPECT_EQ(sum, expected);
    EXPECT_FALSE(sum.IsComplete());
    sum.Add(ScanReport());
    EXPECT_EQ(sum, expected) << "a good end does not take back a bad one";
    ScanReport cancelled;
    cancelled.end.how = ScanEnd::How::Cancelled;
    sum.Add(cancelled);
    EXPECT_TRUE(sum.Ended(ScanEnd::How::Cancelled));
}

TEST(ScanReport, IsCompleteOnlyWhenEverythingWasReached)
{
    ScanReport report;
    EXPECT_TRUE(report.IsComplete());
    for (const ScanEnd::How how : {ScanEnd::How::GaveUp, ScanEnd::How::NotStarted}) {
        report.end.how = how;
        EXPECT_FALSE(report.IsComplete());
    }
    report.end.how = ScanEnd::How::Done;
    report.changes.unreached = {PluginAt(L"/d")};
    EXPECT_FALSE(report.IsComplete());
}

} // namespace

} // namespace zetaudiopluginmanager
