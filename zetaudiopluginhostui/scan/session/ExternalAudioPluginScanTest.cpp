// A scan whose scanner behaves goes on and ends like this.
#include "scan/session/ExternalAudioPluginScan.h"

#include <gmock/gmock.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/threads/MainThread.h>

#include "testing/ExternalScanFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::BannedPluginManager;

class ExternalScan : public ExternalScanFixture
{
  protected:
    const PluginLocator none{};
    const PluginLocator a = Plugin("a.so");
    const PluginLocator b = Plugin("b.so");
};

TEST_F(ExternalScan, AsksForOnePluginAfterTheOtherAndReportsEach)
{
    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true), "ok", Info(b, 1, 2, true, "sub \xc3\xbc"), "ok",
               Info(none, 2, 2, false)});
    ASSERT_TRUE(Start({a, b}));
    RunUntilEnd();
    scan->StopScan();
    EXPECT_THAT(reports, ElementsAre(StartsWith("a.so "), StartsWith("b.so:sub \xc3\xbc "), endReport));
    EXPECT_THAT(Log(1),
                ElementsAre(StartsWith("volume "), StartsWith("Connect "),
                            "BeginScanForPlugins [[" + Quoted(a) + "," + Quoted(b) + "]]", "GetScanInfo []",
                            "ScanOneEntity []", "GetScanInfo []", "ScanOneEntity []", "GetScanInfo []"));
    EXPECT_TRUE(ScannersEnd());
}

TEST_F(ExternalScan, ConnectNamesTheFilesAndTheTwoFlags)
{
    Script(1, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    ASSERT_TRUE(Start({}, true, false));
    RunUntilEnd();
    const auto path = [this](const char* name) { return JsonText(zettesting::ToWide(prefs / name)); };
    EXPECT_THAT(Log(1), Contains("Connect [" + path("plugins.xml") + "," + path("banned.xml") + "," +
                                 path("permanent.xml") + "," + path("plugins.xml.scan") + ",true,false]"));
}

TEST_F(ExternalScan, AnEmptyPendingListStillSendsBeginScanForPluginsWithAnEmptyArray)
{
    Script(1, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    ASSERT_TRUE(Start({}));
    RunUntilEnd();
    EXPECT_THAT(Log(1), Contains("BeginScanForPlugins [[]]"));
    EXPECT_THAT(reports, ElementsAre(endReport));
}

TEST_F(ExternalScan, TheScannerFindsTheMasterTraceVolumeInTheBlock)
{
    zetcore::debug::SetMasterTraceVolume(4);
    Script(1, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    ASSERT_TRUE(Start({}));
    RunUntilEnd();
    EXPECT_THAT(Log(1), Contains("volume 4"));
}

TEST_F(ExternalScan, WhatTheScannerFoundJoinsTheRegistry)
{
    Script(1, {"listen", "ok", "ok", Info(a, 0, 1, true), Result(a, L"Reverb"), Info(none, 1, 1, false)});
    ASSERT_TRUE(Start({a}));
    RunUntilEnd();
    const auto info = PluginModuleInfoManager::GetInstance()->Find(a);
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->GetName(), L"Reverb");
}

TEST_F(ExternalScan, AMissingOrEmptyResultFileIsPassedOver)
{
    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true), "ok", Info(b, 1, 2, true), "result ",
               Info(none, 2, 2, false)});
    ASSERT_TRUE(Start({a, b}));
    RunUntilEnd();
    EXPECT_EQ(PluginModuleInfoManager::GetInstance()->RecordCount(), 0u);
}

TEST_F(ExternalScan, ADamagedResultFileDoesNotStopTheScan)
{
    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true), "result <broken", Info(b, 1, 2, true),
               Result(b, L"Delay"), Info(none, 2, 2, false)});
    ASSERT_TRUE(Start({a, b}));
    RunUntilEnd();
    EXPECT_EQ(PluginModuleInfoManager::GetInstance()->Find(a), nullptr);
    EXPECT_NE(PluginModuleInfoManager::GetInstance()->Find(b), nullptr);
}

TEST_F(ExternalScan, TheResultFileIsDeletedBeforeTheScannerStartsAndWhenTheScanIsOver)
{
    zettesting::WriteAll(ResultFile(), "of an earlier scan");
    Script(1, {"wait go", "listen", "ok", "ok", Info(a, 0, 1, true), Result(a, L"Reverb"), "touch written",
               "wait on", Info(none, 1, 1, false)});
    PortWait portWait;
    bool existedAtLaunch = true;
    portWait.startPauses = [&] {
        existedAtLaunch = std::filesystem::exists(ResultFile());
        Touch("go");
        return PortWait::Pause(zetcore::utility::Backoff());
    };
    scan = std::make_shared<ExternalAudioPluginScan>(portWait);
    ASSERT_TRUE(Start({a}));
    EXPECT_FALSE(existedAtLaunch);
    WaitForFile("written");
    EXPECT_TRUE(std::filesystem::exists(ResultFile()));
    Touch("on");
    RunUntilEnd();
    EXPECT_FALSE(std::filesystem::exists(ResultFile()));
}

TEST_F(ExternalScan, ProgressAndTotalAreThoseOfTheMomentInWhichThePostedReportRuns)
{
    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true), "ok", Info(b, 1, 2, true), "touch second", "hold"});
    ASSERT_TRUE(Start({a, b}));
    WaitForFile("second");
    EXPECT_THAT(reports, IsEmpty());
    RunUntil([&] { return reports.size() == 2; });
    EXPECT_THAT(reports, ElementsAre("a.so 1/2", "b.so 1/2"));
}

TEST_F(ExternalScan, TheTotalIsTheFirstOneThatTheScannerGives)
{
    Script(1, {"listen", "ok", "ok", Info(a, 0, 9, true), "ok", Info(b, 1, 4, true), "ok",
               Info(none, 2, 4, false)});
    ASSERT_TRUE(Start({a, b}));
    RunUntilEnd();
    EXPECT_THAT(reports, ElementsAre(::testing::EndsWith("/9"), ::testing::EndsWith("/9"), endReport));
}

TEST_F(ExternalScan, AnErrorReplyStopsTheChainUntilStopScan)
{
    zetcore::debug::SetMasterTraceVolume(6);
    Script(1, {"listen", "ok", "error"});
    ASSERT_TRUE(Start({a}));
    RunUntil([&] { return ::testing::Value(Traced(), Contains("OnServerFailed()\r\n")); });
    EXPECT_THAT(reports, IsEmpty());
    EXPECT_TRUE(ScannersRun());
    scan->StopScan();
    EXPECT_THAT(reports, ElementsAre(endReport));
    EXPECT_THAT(Log(1), ElementsAre(StartsWith("volume "), StartsWith("Connect "),
                                    "BeginScanForPlugins [[" + Quoted(a) + "]]"));
    EXPECT_TRUE(ScannersEnd());
}

TEST_F(ExternalScan, StopScanAfterTheFinalReportMakesNoSecondReport)
{
    Script(1, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    ASSERT_TRUE(Start({}));
    RunUntilEnd();
    scan->StopScan();
    scan->StopScan();
    loop->Run(std::chrono::steady_clock::time_point::max());
    EXPECT_EQ(EndReports(), 1);
}

TEST_F(ExternalScan, StopScanInTheMiddleEndsTheScannerReportsTheEndAndBansNothing)
{
    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true), "touch scanning", "hold"});
    ASSERT_TRUE(Start({a, b}));
    WaitForFile("scanning");
    scan->StopScan();
    EXPECT_THAT(reports, ElementsAre("a.so 0/2", endReport));
    EXPECT_TRUE(ScannersEnd());
    loop->Run(std::chrono::steady_clock::time_point::max());
    EXPECT_EQ(Launches(), 1);
    EXPECT_FALSE(BannedPluginManager::GetInstance()->IsBanned(a));
    EXPECT_FALSE(std::filesystem::exists(BannedFile()));
}

TEST_F(ExternalScan, StopScanCarriesOutWhatWasPosted)
{
    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true), Result(a, L"Reverb"), Info(b, 1, 2, true),
               "touch second", "hold"});
    ASSERT_TRUE(Start({a, b}));
    WaitForFile("second");
    scan->StopScan();
    EXPECT_NE(PluginModuleInfoManager::GetInstance()->Find(a), nullptr);
}

TEST_F(ExternalScan, ASessionCanBeUsedForOneScanAfterAnother)
{
    for (int number = 1; number <= 3; ++number) {
        Script(number, {"listen", "ok", "ok", Info(a, 0, 1, true), "ok", Info(none, 1, 1, false)});
        reports.clear();
        ASSERT_TRUE(Start({a}));
        RunUntilEnd();
        scan->StopScan();
        EXPECT_THAT(reports, ElementsAre(StartsWith("a.so "), endReport));
    }
    EXPECT_TRUE(ScannersEnd());
}

TEST_F(ExternalScan, ALateReportOfTheEndDoesNotEndTheNextScan)
{
    // Nothing drains the queue here, so the report is still there when the scan is stopped.
    zetcore::threads::RegisterMainThread(nullptr);
    Script(1, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    Script(2, {"listen", "ok", "touch connected", "hold"});
    ASSERT_TRUE(Start({}));
    WaitUntil([] { return zetcore::threads::HasQueuedCalls(); });
    scan->StopScan();
    EXPECT_EQ(EndReports(), 1);
    ASSERT_TRUE(Start({a}));
    WaitForFile("connected");
    zetcore::threads::RunQueuedCalls(std::chrono::steady_clock::time_point::max());
    EXPECT_EQ(EndReports(), 1);
    scan->StopScan();
    EXPECT_EQ(EndReports(), 2);
}

TEST_F(ExternalScan, ACallThatIsCarriedOutAfterTheObjectIsGoneDoesNothing)
{
    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true), "touch scanning", "hold"});
    ASSERT_TRUE(Start({a, b}));
    WaitForFile("scanning");
    // The reply's handler, which asked for that, holds the object until it returns.
    WaitUntil([this] { return scan.use_count() == 1; });
    scan.reset();
    loop->Run(std::chrono::steady_clock::time_point::max());
    EXPECT_THAT(reports, IsEmpty());
    EXPECT_TRUE(ScannersEnd()); // The connection has closed.
}

TEST_F(ExternalScan, TracesEveryStepOfAScan)
{
    zetcore::debug::SetMasterTraceVolume(6);
    Script(1, {"listen", "ok", "ok", Info(a, 0, 1, true), "ok", Info(none, 1, 1, false)});
    ASSERT_TRUE(Start({a}));
    RunUntilEnd();
    scan->StopScan();
    const auto traced = Traced();
    ASSERT_GE(traced.size(), 5u);
    EXPECT_THAT(std::vector<std::string>(traced.begin(), traced.begin() + 4),
                ElementsAre("Writing trace volume, volume: 6\r\n", "Launching scan server\r\n",
                            "Retrieve server's port\r\n", StartsWith("Scan server's port: ")));
    EXPECT_THAT(traced, Contains("Sent connection request\r\n"));
    // The main thread's last line may come anywhere among the lines of the replies.
    std::vector<std::string> replies(traced.begin() + 4, traced.end());
    std::erase(replies, "Sent connection request\r\n");
    EXPECT_THAT(replies, ElementsAre("OnServerConnectOK()\r\n", "SendScanRequest\r\n",
                                     "OnScanRequestSuccess\r\n", "SendGetScanInfo\r\n", "OnScanInfo\r\n",
                                     "SendScanOneEntity\r\n", "SendGetScanInfo\r\n", "OnScanInfo\r\n"));
}

TEST_F(ExternalScan, TracesNothingWithItsCategoryOff)
{
    zetcore::debug::SetMasterTraceVolume(9);
    zetcore::debug::SetTraceCategoryEnabled("ExternalAudioPluginScan", false);
    Script(1, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    ASSERT_TRUE(Start({}));
    RunUntilEnd();
    EXPECT_THAT(Traced(), IsEmpty());
}

TEST_F(ExternalScan, AServerThatQuitsIsTheEndOfTheScan)
{
    zetcore::debug::SetMasterTraceVolume(6);
    Script(1, {"listen", "touch connected", "hold"});
    ASSERT_TRUE(Start({a}));
    WaitForFile("connected");
    ExternalAudioPluginScanAccess::OnServerQuitDone(*scan);
    EXPECT_THAT(reports, IsEmpty());
    RunUntilEnd();
    EXPECT_THAT(Traced(), Contains("Server quitted\r\n"));
    EXPECT_THAT(Traced(), Not(Contains("OnListenerClose()\r\n")));
}

} // namespace
} // namespace zetaudiopluginhostui
