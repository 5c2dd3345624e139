// The next scanner of a scan goes on where the one before ended; the next scan of one object begins anew.
#include <gmock/gmock.h>
#include <zetaudiopluginhostui/ScanLimits.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/filesupport/paths/CommonDirs.h>

#include "testing/ExternalScanStepsFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Access = ExternalAudioPluginScanAccess;
using ExternalScanAgain = ExternalScanStepsFixture;

TEST_F(ExternalScanAgain, APluginIsPendingUntilItsVeryLocatorIsReported)
{
    const PluginLocator first(a.GetTechnologyType(), a.GetPath(), L"first");
    const PluginLocator second(a.GetTechnologyType(), a.GetPath(), L"second");
    ASSERT_TRUE(Start({a, first, second, b}));
    Begin();
    AnswerInfo(second, 0, 4);
    connection->LoseScanner();
    RunPosted();
    AnswerOk();
    EXPECT_EQ(ListSent(), "[[" + Quoted(a) + "," + Quoted(first) + "," + Quoted(b) + "]]");
}

TEST_F(ExternalScanAgain, EachScannersCountIsAddedToWhatWasDoneWhenTheOneBeforeEnded)
{
    ASSERT_TRUE(Start({a, b, c, d}));
    Begin();
    AnswerInfo(a, 0, 4);
    AnswerOk();
    AnswerInfo(b, 1, 4);
    EXPECT_EQ(LastReport(), "b.so 1/4");
    connection->LoseScanner();
    RunPosted();
    Begin();
    AnswerInfo(c, 1, 2);
    EXPECT_EQ(LastReport(), "c.so 2/4");
    connection->LoseScanner();
    RunPosted();
    Begin();
    AnswerInfo(d, 0, 1);
    EXPECT_EQ(LastReport(), "d.so 2/4");
    AnswerOk();
    AnswerInfo(none, 1, 1, false);
    EXPECT_EQ(LastReport(), endReport);
    EXPECT_THAT(AllBanned(), ElementsAre(b, c));
}

TEST_F(ExternalScanAgain, ASecondScanOfOneObjectKnowsNothingOfTheFirst)
{
    ASSERT_TRUE(Start({a, b, c, d}, true, false));
    for (const auto& [plugin, done] : {std::pair(a, 2), {b, 1}}) {
        Begin();
        AnswerInfo(plugin, done, 4);
        connection->LoseScanner();
        RunPosted();
    }
    Begin();
    AnswerInfo(c, 1, 4);
    EXPECT_EQ(LastReport(), "c.so 4/4");
    EXPECT_THAT(AllBanned(), ElementsAre(a, b));
    scan->StopScan();
    EXPECT_EQ(EndReports(), 1);
    EXPECT_TRUE(Access::Connected(*scan));

    connection->requests.clear();
    banned = zettesting::ToWide(prefs / "other.xml");
    ASSERT_TRUE(Start({d, a}, false, true));
    EXPECT_FALSE(Access::Connected(*scan));
    const auto path = [this](const char* name) { return JsonText(zettesting::ToWide(prefs / name)); };
    EXPECT_EQ(connection->Last().arguments, "[" + path("plugins.xml") + "," + path("other.xml") + "," +
                                                path("permanent.xml") + "," + path("plugins.xml.scan") +
                                                ",false,true]");
    Begin();
    EXPECT_EQ(ListSent(), "[[" + Quoted(d) + "," + Quoted(a) + "]]");
    AnswerInfo(d, 0, 2);
    EXPECT_EQ(LastReport(), "d.so 0/2");
    AnswerOk();
    AnswerInfo(none, 1, 2, false);
    EXPECT_EQ(LastReport(), endReport);
    EXPECT_EQ(EndReports(), 2);
}

TEST_F(ExternalScanAgain, ASecondScanBlamesNobodyForWhatTheFirstWasAt)
{
    ASSERT_TRUE(Start({a, b}));
    Begin();
    AnswerInfo(a, 0, 2);
    // The end is reported in the middle, so that stopping finds nothing to report and leaves the locator.
    Access::OnServerQuitDone(*scan);
    RunPosted();
    AnswerOk();
    AnswerInfo(b, 1, 2);
    scan->StopScan();
    ASSERT_TRUE(Start({a}));
    connection->LoseScanner();
    EXPECT_THAT(AllBanned(), IsEmpty());
    RunPosted();
    EXPECT_EQ(Launches(), 3);
}

TEST_F(ExternalScanAgain, AStartLeavesAnOlderScannerRunningAndForgetsItsHandle)
{
    connection->answers = false;
    EXPECT_FALSE(Start({a}));
    const auto first = Access::Process(*scan);
    EXPECT_TRUE(first);
    connection->answers = true;
    ASSERT_TRUE(Start({a}));
    EXPECT_NE(Access::Process(*scan).handle, first.handle);
    WaitUntil([this] { return RunningScanners() == 2; });
    scan->StopScan();
    EXPECT_EQ(RunningScanners(), 1);

    connection->answers = false;
    EXPECT_FALSE(Start({a}));
    EXPECT_TRUE(Access::Process(*scan));
    zetcore::filesupport::commondirs::SetExecutableDir(folder.Wide());
    EXPECT_FALSE(Start({a}));
    EXPECT_FALSE(Access::Process(*scan));
    Touch("end");
    EXPECT_TRUE(ScannersEnd());
}

TEST_F(ExternalScanAgain, ARestartLeavesAScannerThatHasOnlyClosedItsConnectionRunning)
{
    ASSERT_TRUE(Start({a, b}));
    WaitForFile("started");
    Begin();
    AnswerInfo(a, 0, 2);
    connection->LoseScanner();
    RunPosted();
    WaitUntil([this] { return RunningScanners() == 2; });
    scan->StopScan();
    EXPECT_EQ(RunningScanners(), 1);
    Touch("end");
    EXPECT_TRUE(ScannersEnd());
}

TEST_F(ExternalScanAgain, ARestartThatFailsSaysWhy)
{
    ASSERT_TRUE(Start({a, b}));
    Begin();
    AnswerInfo(a, 0, 2);
    zetcore::filesupport::commondirs::SetExecutableDir(folder.Wide());
    connection->LoseScanner();
    RunPosted();
    EXPECT_THAT(scan->StartFailure(), ::testing::StartsWith("There is no scanner program: "));
    EXPECT_EQ(EndReports(), 0);
    scan->StopScan();
    EXPECT_EQ(EndReports(), 1);
    EXPECT_THAT(scan->StartFailure(), ::testing::StartsWith("There is no scanner program: "));
}

TEST_F(ExternalScanAgain, AScanThatGivesUpSaysHowItsLastScannerEnded)
{
    zetcore::debug::DebugDatabase::Instance().SetEntry(mostFruitlessRestarts, "1");
    for (const int number : {1, 2})
        Script(number, {"word 4711", "die"});
    ASSERT_TRUE(Start({a, b}));
    for (const int number : {1, 2}) {
        EXPECT_EQ(Launches(), number);
        EXPECT_EQ(scan->WhyGaveUp(), "");
        WaitUntil([this] { return FindScannerProcessEnd(Access::Process(*scan)).has_value(); });
        connection->LoseScanner();
        RunPosted();
    }
    EXPECT_EQ(EndReports(), 1);
    EXPECT_EQ(scan->WhyGaveUp(), "The scanner was restarted 1 times without getting on; plug-ins not "
                                 "scanned: 2. The last one ended with exit status 1");
    ASSERT_TRUE(Start({a}));
    EXPECT_EQ(scan->WhyGaveUp(), "");
}

} // namespace
} // namespace zetaudiopluginhostui
