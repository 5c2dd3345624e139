// A scan must go on when its scanner dies.
#include <algorithm>

#include <gmock/gmock.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/threads/MainThread.h>

#include "testing/ExternalScanFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::BannedPluginManager;

class ExternalScanCrash : public ExternalScanFixture
{
  protected:
    static bool IsBanned(const PluginLocator& plugin)
    {
        return BannedPluginManager::GetInstance()->IsBanned(plugin);
    }
    static int BannedCount()
    {
        return static_cast<int>(std::distance(BannedPluginManager::GetInstance()->BannedBegin(),
                                              BannedPluginManager::GetInstance()->BannedEnd()));
    }
    std::string Begin(const std::vector<PluginLocator>& plugins) const
    {
        std::string list;
        for (const PluginLocator& plugin : plugins)
            list += (list.empty() ? "" : ",") + Quoted(plugin);
        return "BeginScanForPlugins [[" + list + "]]";
    }
    bool HasTraced(const std::string& text) const
    {
        const auto traced = Traced();
        return std::find(traced.begin(), traced.end(), text + "\r\n") != traced.end();
    }
    /// Waits until the session has dealt with the end of its connection.
    void WaitUntilClosed() const
    {
        WaitUntil([this] {
            return HasTraced("OnListenerClose()") && !ExternalAudioPluginScanAccess::ConnectedNow(*scan);
        });
    }

    const PluginLocator none{};
    const PluginLocator a = Plugin("a.so");
    const PluginLocator b = Plugin("b.so");
    const PluginLocator c = Plugin("c.so");
};

TEST_F(ExternalScanCrash, BansThePluginSavesTheListAndScansTheRestInANewScanner)
{
    Script(1, {"listen", "ok", "ok", Info(a, 0, 3, true), "ok", Info(b, 1, 3, true), "die"});
    Script(2, {"listen", "ok", "ok", Info(c, 0, 1, true), Result(c, L"Chorus"), Info(none, 1, 1, false)});
    ASSERT_TRUE(Start({a, b, c}));
    RunUntilEnd();
    EXPECT_TRUE(IsBanned(b));
    EXPECT_EQ(BannedCount(), 1);
    EXPECT_THAT(Log(2), Contains(Begin({c})));
    EXPECT_NE(PluginModuleInfoManager::GetInstance()->Find(c), nullptr);

    BannedPluginManager saved;
    EXPECT_TRUE(saved.LoadConfiguration(zetcore::filesupport::File(banned)));
    EXPECT_TRUE(saved.IsBanned(b));
}

TEST_F(ExternalScanCrash, TheNewScannersProgressIsAddedToWhatWasDoneOfTheSameTotal)
{
    Script(1, {"listen", "ok", "ok", Info(a, 0, 3, true), "ok", Info(b, 1, 3, true), "wait seen", "die"});
    Script(2, {"listen", "ok", "ok", Info(c, 0, 1, true), "wait seen again", "ok", Info(none, 1, 1, false)});
    ASSERT_TRUE(Start({a, b, c}));
    RunUntil([&] { return reports.size() == 2; });
    Touch("seen");
    RunUntil([&] { return reports.size() == 3; });
    Touch("seen again");
    RunUntilEnd();
    EXPECT_THAT(reports, ElementsAre(::testing::StartsWith("a.so "), "b.so 1/3", "c.so 1/3", endReport));
}

TEST_F(ExternalScanCrash, WhileNoPluginHasBeenReportedBansNothingAndRestartsForThePending)
{
    Script(1, {"listen", "ok", "die"});
    Script(2, {"listen", "ok", "ok", Info(a, 0, 1, true), "ok", Info(none, 1, 1, false)});
    ASSERT_TRUE(Start({a}));
    RunUntilEnd();
    EXPECT_EQ(BannedCount(), 0);
    EXPECT_FALSE(std::filesystem::exists(BannedFile()));
    EXPECT_THAT(Log(2), Contains(Begin({a})));
}

TEST_F(ExternalScanCrash, WhileNoPluginHasBeenReportedAndNoneIsPendingEndsTheScan)
{
    Script(1, {"listen", "die"});
    ASSERT_TRUE(Start({}));
    RunUntilEnd();
    EXPECT_EQ(Launches(), 1);
    EXPECT_EQ(BannedCount(), 0);
}

TEST_F(ExternalScanCrash, AfterTheLastPluginWasReportedDoesNotRestartAndPostsTheFinalReport)
{
    Script(1, {"listen", "ok", "ok", Info(a, 0, 1, true), "die"});
    ASSERT_TRUE(Start({a}));
    RunUntilEnd();
    EXPECT_TRUE(IsBanned(a));
    EXPECT_EQ(EndReports(), 1);
    scan->StopScan();
    EXPECT_EQ(EndReports(), 1);
    EXPECT_EQ(Launches(), 1);
}

TEST_F(ExternalScanCrash, ARecordWhoseLocatorPathIsEmptyDoesNotChangeThePendingList)
{
    Script(1, {"listen", "ok", "ok", Info(none, 0, 2, true), "die"});
    Script(2, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    ASSERT_TRUE(Start({a, b}));
    RunUntilEnd();
    EXPECT_EQ(BannedCount(), 0);
    EXPECT_THAT(Log(2), Contains(Begin({a, b})));
}

TEST_F(ExternalScanCrash, ALocatorThatDoesNotParseCountsAsNone)
{
    Script(1,
           {"listen", "ok", "ok",
            "reply {\"value\":{\"locator\":\"no locator\",\"subcomponent\":\"\",\"progress\":0,\"total\":1,"
            "\"continue\":true}}",
            "die"});
    Script(2, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    ASSERT_TRUE(Start({a}));
    RunUntilEnd();
    EXPECT_EQ(BannedCount(), 0);
    EXPECT_THAT(Log(2), Contains(Begin({a})));
}

TEST_F(ExternalScanCrash, OnlyTheFirstOfEqualPendingPluginsIsTakenOutAndTheRestKeepTheirOrder)
{
    Script(1, {"listen", "ok", "ok", Info(b, 0, 4, true), "die"});
    Script(2, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    ASSERT_TRUE(Start({a, b, c, b}));
    RunUntilEnd();
    EXPECT_THAT(Log(2), Contains(Begin({a, c, b})));
}

TEST_F(ExternalScanCrash, EveryCrashThatLeavesPluginsPendingStartsAnotherScanner)
{
    std::vector<PluginLocator> plugins;
    for (int number = 1; number <= 6; ++number) {
        plugins.push_back(Plugin(std::to_string(number) + ".so"));
        Script(number, {"listen", "ok", "ok", Info(plugins.back(), 0, 6, true), "die"});
    }
    ASSERT_TRUE(Start(plugins));
    RunUntilEnd();
    EXPECT_EQ(Launches(), 6);
    EXPECT_EQ(BannedCount(), 6);
    EXPECT_EQ(EndReports(), 1);
}

TEST_F(ExternalScanCrash, AMalformedReplyEndsTheSessionLikeACrash)
{
    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true), "ok", "reply {}"});
    Script(2, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    ASSERT_TRUE(Start({a, b}));
    RunUntilEnd();
    EXPECT_THAT(Log(2), Contains(Begin({b})));
    EXPECT_TRUE(IsBanned(a));
}

TEST_F(ExternalScanCrash, ABannedListThatCannotBeSavedDoesNotStopTheScan)
{
    zettesting::WriteAll(folder / "file", "");
    banned = zettesting::ToWide(folder / "file" / "banned.xml");
    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true), "die"});
    Script(2, {"listen", "ok", "ok", Info(b, 0, 1, true), "ok", Info(none, 1, 1, false)});
    ASSERT_TRUE(Start({a, b}));
    RunUntilEnd();
    EXPECT_TRUE(IsBanned(a));
    EXPECT_THAT(Log(2), Contains(Begin({b})));
}

TEST_F(ExternalScanCrash, AfterTheFinalReportPostsNothing)
{
    zetcore::debug::SetMasterTraceVolume(6);
    Script(1, {"listen", "ok", "ok", "die-when go", Info(none, 0, 0, false)});
    ASSERT_TRUE(Start({}));
    RunUntilEnd();
    Touch("go");
    WaitUntilClosed();
    scan->StopScan();
    EXPECT_EQ(EndReports(), 1);
}

TEST_F(ExternalScanCrash, AScannerThatIsRelaunchedWhileStopScanDrainsTheQueueIsEndedByTheSameStopScan)
{
    zetcore::debug::SetMasterTraceVolume(6);
    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true), "die"});
    Script(2, {"listen", "touch relaunched", "hold"});
    ASSERT_TRUE(Start({a, b}));
    WaitUntilClosed();
    EXPECT_EQ(Launches(), 1);
    scan->StopScan();
    EXPECT_TRUE(HasTraced("RestartSession()"));
    EXPECT_EQ(Launches(), 2);
    EXPECT_EQ(EndReports(), 1);
    EXPECT_TRUE(ScannersEnd());
}

TEST_F(ExternalScanCrash, ARestartThatIsCarriedOutAfterStopScanStartsNoScanner)
{
    // Nothing drains the queue here, so the restart is still there when the scan is stopped.
    zetcore::threads::RegisterMainThread(nullptr);
    zetcore::debug::SetMasterTraceVolume(6);
    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true), "die"});
    ASSERT_TRUE(Start({a, b}));
    WaitUntilClosed();
    scan->StopScan();
    zetcore::threads::RunQueuedCalls(std::chrono::steady_clock::time_point::max());
    EXPECT_TRUE(HasTraced("RestartSession()"));
    EXPECT_EQ(Launches(), 1);
    EXPECT_EQ(EndReports(), 1);
}

TEST_F(ExternalScanCrash, AfterAFailedRestartNothingHappensUntilStopScan)
{
    zetcore::debug::SetMasterTraceVolume(6);
    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true), "die"});
    Script(2, {"dead", "wait end"});
    ASSERT_TRUE(Start({a, b}));
    RunUntil([&] { return Launches() == 2; });
    loop->Run(std::chrono::steady_clock::time_point::max());
    EXPECT_EQ(EndReports(), 0);
    scan->StopScan();
    EXPECT_EQ(EndReports(), 1);
    EXPECT_TRUE(ScannersEnd());
}

} // namespace
} // namespace zetaudiopluginhostui
