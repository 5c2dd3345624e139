// A session does its steps in this order, and holds its mutex in some of them.
#include <thread>

#include <gmock/gmock.h>
#include <zetaudiopluginhost/BanReasons.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zettesting/Patience.h>

#include "testing/ExternalScanStepsFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zetaudiopluginhost::BannedPluginManager;
using Access = ExternalAudioPluginScanAccess;
using ExternalScanSteps = ExternalScanStepsFixture;

TEST_F(ExternalScanSteps, TheMutexIsHeldForTheTwoRequestsThatDependOnTheStateAndForWhatIsPosted)
{
    onReport = [this] { Note(reports.back()); };
    ASSERT_TRUE(Start({a}));
    EXPECT_THAT(TakeSteps(), ElementsAre("open 4711 free", "register free", "send Connect free"));
    AnswerOk();
    EXPECT_THAT(TakeSteps(), ElementsAre("send BeginScanForPlugins held"));
    AnswerOk();
    EXPECT_THAT(TakeSteps(), ElementsAre("send GetScanInfo free"));
    AnswerInfo(a, 0, 1);
    EXPECT_THAT(TakeSteps(), ElementsAre("post held", "send ScanOneEntity held"));
    zettesting::WriteAll(ResultFile(), Result(a, L"Reverb").substr(sizeof "result"));
    AnswerOk();
    EXPECT_THAT(TakeSteps(), ElementsAre("post held", "send GetScanInfo free"));
    AnswerInfo(none, 1, 1, false);
    EXPECT_THAT(TakeSteps(), ElementsAre("post held"));
    RunPosted();
    EXPECT_THAT(TakeSteps(), ElementsAre("a.so 1/1 free", " 1/0 held"));
}

TEST_F(ExternalScanSteps, TheConnectionRequestIsTracedOnceItHasBeenSent)
{
    NoteTraces("Sent connection request");
    ASSERT_TRUE(Start({a}));
    EXPECT_THAT(TakeSteps(),
                ElementsAre("open 4711 free", "register free", "send Connect free", "trace free"));
}

TEST_F(ExternalScanSteps, TheSessionIsConnectedOnceConnectIsAnsweredAndBeforeTheListIsSent)
{
    std::vector<bool> connected;
    connection->onSend = [&](const std::string&) { connected.push_back(Access::Connected(*scan)); };
    ASSERT_TRUE(Start({a}));
    AnswerOk();
    EXPECT_THAT(connected, ElementsAre(false, true));
}

TEST_F(ExternalScanSteps, WithoutAnAnswerAtThePortNothingIsSent)
{
    connection->answers = false;
    EXPECT_FALSE(Start({a}));
    EXPECT_THAT(TakeSteps(), ElementsAre("open 4711 free"));
    EXPECT_EQ(scan->StartFailure(),
              "The scanner does not answer at port 4711 of 127.0.0.1, where it said that "
              "it listens");
}

TEST_F(ExternalScanSteps, ABanIsMadeAndSavedUnderTheMutexAndThenTheRestartIsPosted)
{
    ASSERT_TRUE(Start({a, b}));
    Begin();
    EXPECT_TRUE(Access::Connected(*scan));
    AnswerInfo(a, 0, 2);
    // The reason of a ban is looked for in this file. It holds none, and that is traced.
    const auto list = prefs / BannedPluginManager::GetSettingsFileName();
    zettesting::WriteAll(zetaudiopluginhost::BanReasonsPath(zettesting::ToWide(list)), "no list");
    NoteTraces(".reasons");
    TakeSteps();
    EXPECT_EQ(connection->LoseScanner(), 0);
    const auto closing = TakeSteps();
    ASSERT_GE(closing.size(), 2u);
    EXPECT_EQ(closing.front(), "trace held");
    EXPECT_EQ(closing.back(), "post held");
    EXPECT_FALSE(Access::Connected(*scan));
    BannedPluginManager saved;
    EXPECT_TRUE(saved.LoadConfiguration(zetcore::filesupport::File(banned)));
    EXPECT_TRUE(saved.IsBanned(a));
}

TEST_F(ExternalScanSteps, AScannerThatDiesWhileTheScanIsBeingStoppedIsNotReplacedButItsPluginIsBanned)
{
    ASSERT_TRUE(Start({a, b}));
    Begin();
    AnswerInfo(a, 0, 2);
    bool heldWhileClosing = true;
    connection->onClose = [&] {
        heldWhileClosing = Access::MutexIsHeld(*scan);
        if (!heldWhileClosing)
            std::thread([this] { connection->LoseScanner(); }).join();
    };
    scan->StopScan();
    EXPECT_FALSE(heldWhileClosing);
    EXPECT_THAT(AllBanned(), ElementsAre(a));
    RunPosted();
    EXPECT_EQ(Launches(), 1);
    EXPECT_EQ(EndReports(), 1);
}

TEST_F(ExternalScanSteps, StopScanLetsPostedCallsRunForADayThenClosesThenEndsTheScannerThenReports)
{
    ASSERT_TRUE(Start({a}));
    WaitForFile("started");
    onReport = [this] {
        EXPECT_FALSE(Access::Process(*scan));
        // On Windows a program that was ended is there for a moment yet.
        const bool ended = zettesting::Becomes([this] { return !ScannersRun(); });
        Note(ended ? "report" : "report while it runs");
    };
    connection->onClose = [this] { EXPECT_TRUE(Access::Process(*scan)); };
    TakeSteps();
    constexpr std::chrono::hours day{24};
    const auto before = std::chrono::steady_clock::now();
    scan->StopScan();
    const auto after = std::chrono::steady_clock::now();
    EXPECT_THAT(TakeSteps(), ElementsAre("run free", "close free", "report held"));
    EXPECT_GE(recordingLoop->deadline, before + day);
    EXPECT_LE(recordingLoop->deadline, after + day);
}

TEST_F(ExternalScanSteps, StopScanRunsNoLoopThatCannotRun)
{
    ASSERT_TRUE(Start({a}));
    recordingLoop->canRun = false;
    TakeSteps();
    scan->StopScan();
    EXPECT_THAT(TakeSteps(), ElementsAre("close free"));
}

TEST_F(ExternalScanSteps, AReplyThatNothingIsLeftPostsNoEndOnceTheScanHasBeenStopped)
{
    ASSERT_TRUE(Start({a}));
    Begin();
    scan->StopScan();
    TakeSteps();
    AnswerInfo(none, 0, 0, false);
    EXPECT_THAT(TakeSteps(), IsEmpty());
    EXPECT_EQ(EndReports(), 1);
}

TEST_F(ExternalScanSteps, AScannerThatQuitsAfterTheEndIsReportedAllTheSame)
{
    ASSERT_TRUE(Start({}));
    Begin();
    AnswerInfo(none, 0, 0, false);
    RunPosted();
    Access::OnServerQuitDone(*scan);
    EXPECT_EQ(EndReports(), 1);
    RunPosted();
    EXPECT_EQ(EndReports(), 2);
}

TEST_F(ExternalScanSteps, TheEndIsReportedWhileTheResultFileIsStillThereAndThenNothingIsBeingScanned)
{
    ASSERT_TRUE(Start({a}));
    Begin();
    AnswerInfo(a, 0, 1);
    zettesting::WriteAll(ResultFile(), "");
    bool existed = false;
    onReport = [&] { existed = std::filesystem::exists(ResultFile()); };
    AnswerOk();
    AnswerInfo(a, 1, 1, false);
    RunPosted();
    EXPECT_EQ(EndReports(), 1);
    EXPECT_TRUE(existed);
    EXPECT_FALSE(std::filesystem::exists(ResultFile()));
    connection->LoseScanner();
    EXPECT_THAT(AllBanned(), IsEmpty());
}

} // namespace
} // namespace zetaudiopluginhostui
