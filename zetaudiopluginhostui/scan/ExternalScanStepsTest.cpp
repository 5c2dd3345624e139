// The steps of a session one by one: in which order, and under which of them its mutex is held. The test
// answers the requests itself, on its own thread, in the place of the transport.
#include <thread>

#include <gmock/gmock.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BanReasons.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/CommonDirs.h>
#include <zetmarshal/JsonValue.h>

#include "testing/ExternalScanFixture.h"
#include "testing/RecordingConnection.h"
#include "testing/RecordingLoop.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::BannedPluginManager;
using zetcore::serialization::Value;
using zetcore::serialization::ValuePtr;
using Access = ExternalAudioPluginScanAccess;

class ExternalScanSteps : public ExternalScanFixture
{
  protected:
    ExternalScanSteps()
    {
        UseConnection();
        recordingLoop = std::make_shared<RecordingLoop>([this](const std::string& step) { Note(step); });
        loop = recordingLoop;
        zetcore::threads::RegisterMainThread(loop);
        for (int number = 1; number <= 5; ++number)
            Script(number, {"word " + std::to_string(4710 + number), "touch started", "wait end"});
    }
    ~ExternalScanSteps() override
    {
        Touch("end");
        onReport = {};
        connection->onClose = {};
        scan->StopScan();
        // Nothing may be noted any more.
        scan.reset();
        zetcore::threads::RegisterMainThread(nullptr);
        zetcore::debug::SetTraceSink({});
    }

    void UseConnection()
    {
        auto recording =
            std::make_unique<RecordingConnection>([this](const std::string& step) { Note(step); });
        connection = recording.get();
        scan = std::make_shared<ExternalAudioPluginScan>(PortWait(), std::move(recording));
    }
    /// A step, and whether another thread could have taken the session's mutex meanwhile.
    void Note(const std::string& step)
    {
        steps.push_back(step + (Access::MutexIsHeld(*scan) ? " held" : " free"));
    }
    std::vector<std::string> TakeSteps() { return std::exchange(steps, {}); }
    /// Notes the lines that contain the text.
    void NoteTraces(const std::string& text)
    {
        zetcore::debug::SetMasterTraceVolume(6);
        zetcore::debug::SetTraceSink([this, text](int, std::string_view, std::string_view line) {
            if (line.find(text) != line.npos)
                Note("trace");
        });
    }

    void Answer(const ValuePtr& value) const { connection->Last().onResult(value, 1); }
    void AnswerOk() const { Answer(zetmarshal::FromJson("{}")); }
    void AnswerInfo(const PluginLocator& plugin, int progress, int total, bool continues = true) const
    {
        Answer(zetmarshal::FromJson(Info(plugin, progress, total, continues).substr(sizeof "reply")));
    }
    /// Until the scanner is asked where it is.
    void Begin() const
    {
        AnswerOk();
        AnswerOk();
    }
    void RunPosted() { loop->PlainEventLoop::Run(std::chrono::steady_clock::time_point::max()); }
    std::string LastReport()
    {
        RunPosted();
        return reports.empty() ? "none" : reports.back();
    }
    std::vector<std::string> Sent() const
    {
        std::vector<std::string> methods;
        for (const auto& request : connection->requests)
            methods.push_back(request.method);
        return methods;
    }
    std::string ListSent() const
    {
        for (auto request = connection->requests.rbegin(); request != connection->requests.rend(); ++request)
            if (request->method == "BeginScanForPlugins")
                return request->arguments;
        return "none";
    }
    static std::vector<PluginLocator> AllBanned()
    {
        const auto& banned = *BannedPluginManager::GetInstance();
        return {banned.BannedBegin(), banned.BannedEnd()};
    }

    const PluginLocator none;
    const PluginLocator a = Plugin("a.so");
    const PluginLocator b = Plugin("b.so");
    const PluginLocator c = Plugin("c.so");
    const PluginLocator d = Plugin("d.so");
    RecordingConnection* connection = nullptr;
    std::shared_ptr<RecordingLoop> recordingLoop;
    std::vector<std::string> steps;
};

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

TEST_F(ExternalScanSteps, WithoutAnAnswerAtThePortNothingIsSent)
{
    connection->answers = false;
    EXPECT_FALSE(Start({a}));
    EXPECT_THAT(TakeSteps(), ElementsAre("open 4711 free"));
    EXPECT_EQ(scan->StartFailure(),
              "The scanner does not answer at port 4711 of 127.0.0.1, where it said that "
              "it listens");
}

TEST_F(ExternalScanSteps, TheResultFileIsReadUnderTheMutexAndOneThatCannotBeReadIsTracedAndPassedOver)
{
    std::filesystem::create_directory(ResultFile());
    std::filesystem::create_directory(ResultFile() / "so that it is not deleted");
    EXPECT_THROW(Start({a}), std::exception);
    std::filesystem::remove_all(ResultFile());

    ASSERT_TRUE(Start({a}));
    Begin();
    AnswerInfo(a, 0, 1);
    std::filesystem::create_directory(ResultFile());
    NoteTraces(ResultFile().string());
    TakeSteps();
    AnswerOk();
    EXPECT_THAT(TakeSteps(), ElementsAre("trace held", "send GetScanInfo free"));
    EXPECT_THAT(AllBanned(), IsEmpty());
    AnswerInfo(none, 1, 1, false);
    RunPosted();
    EXPECT_EQ(EndReports(), 1);
    scan->StopScan();
    EXPECT_EQ(EndReports(), 1);
}

TEST_F(ExternalScanSteps, APreferencesFolderThatBecomesInaccessibleBansNobody)
{
    ASSERT_TRUE(Start({a, b}));
    Begin();
    AnswerInfo(a, 0, 2);
    std::filesystem::rename(prefs, folder / "away");
    zettesting::WriteAll(prefs, "a file, so that nothing in the folder can be reached");
    AnswerOk();
    AnswerInfo(b, 1, 2);
    AnswerOk();
    EXPECT_THAT(Sent(), ElementsAre("Connect", "BeginScanForPlugins", "GetScanInfo", "ScanOneEntity",
                                    "GetScanInfo", "ScanOneEntity", "GetScanInfo"));
    EXPECT_THAT(AllBanned(), IsEmpty());
    std::filesystem::remove(prefs);
    std::filesystem::rename(folder / "away", prefs);
}

TEST_F(ExternalScanSteps, WhatWasFoundJoinsTheRegistryOnTheMainThreadWithItsBytesUnchanged)
{
    ASSERT_TRUE(Start({a}));
    Begin();
    AnswerInfo(a, 0, 1);
    std::string text = Result(a, L"Big@Reverb").substr(sizeof "result");
    const auto mark = text.find('@');
    ASSERT_NE(mark, std::string::npos);
    // In XML, a line end within an attribute is a blank.
    text[mark] = '\r';
    zettesting::WriteAll(ResultFile(), text);
    AnswerOk();
    EXPECT_EQ(PluginModuleInfoManager::GetInstance()->Find(a), nullptr);
    RunPosted();
    const auto info = PluginModuleInfoManager::GetInstance()->Find(a);
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->GetName(), L"Big Reverb");
    // For whoever else wants it.
    EXPECT_TRUE(std::filesystem::exists(ResultFile()));
}

TEST_F(ExternalScanSteps, ABanIsMadeAndSavedUnderTheMutexAndThenTheRestartIsPosted)
{
    ASSERT_TRUE(Start({a, b}));
    Begin();
    EXPECT_TRUE(Access::Connected(*scan));
    AnswerInfo(a, 0, 2);
    // Whoever bans a plug-in looks for its reason here, and traces that this is none.
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
        Note(ScannersRun() ? "report while it runs" : "report");
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

TEST_F(ExternalScanSteps, AnErrorReplyToAnyRequestIsOnlyTracedAndForbidsNoRestart)
{
    for (int good = 0; good < 4; ++good) {
        SCOPED_TRACE(good);
        ASSERT_TRUE(Start({a, b}));
        for (int reply = 0; reply < good; ++reply)
            reply == 2 ? AnswerInfo(a, 0, 2) : AnswerOk();
        NoteTraces("OnServerFailed()");
        TakeSteps();
        connection->Last().onError(-32001, L"refused", 1);
        EXPECT_THAT(TakeSteps(), ElementsAre("trace free"));
        RunPosted();
        EXPECT_EQ(EndReports(), good);
        const int before = Launches();
        connection->LoseScanner();
        RunPosted();
        EXPECT_EQ(Launches(), before + 1);
        EXPECT_THAT(AllBanned().size(), good == 3 ? 1u : 0u);
        scan->StopScan();
        for (int number = 1; number <= 2; ++number)
            Script(Launches() + number, {"word 4711", "wait end"});
    }
}

TEST_F(ExternalScanSteps, RepliesWithoutAValueAreAsGoodAsAnyWhereNoneIsExpected)
{
    for (const ValuePtr& nothing : {ValuePtr(), std::make_shared<Value>()}) {
        connection->requests.clear();
        ASSERT_TRUE(Start({a}));
        Answer(nothing);
        Answer(nothing);
        AnswerInfo(a, 0, 1);
        Answer(nothing);
        EXPECT_THAT(Sent(), ElementsAre("Connect", "BeginScanForPlugins", "GetScanInfo", "ScanOneEntity",
                                        "GetScanInfo"));
        scan->StopScan();
    }
}

TEST_F(ExternalScanSteps, ABadRecordsErrorLeavesTheHandlerAndChangesNothing)
{
    ASSERT_TRUE(Start({a}));
    Begin();
    TakeSteps();
    for (const ValuePtr& bad : {ValuePtr(), std::make_shared<Value>(), zetmarshal::FromJson("[]")})
        EXPECT_THROW(Answer(bad), std::bad_any_cast);
    EXPECT_THROW(AnswerOk(), zetcore::serialization::missing_key_exception);
    EXPECT_THAT(TakeSteps(), IsEmpty());
    EXPECT_FALSE(Access::MutexIsHeld(*scan));
    AnswerInfo(a, 0, 1);
    EXPECT_EQ(LastReport(), "a.so 0/1");
}

TEST_F(ExternalScanSteps, TheTotalIsTakenUntilThereIsOne)
{
    ASSERT_TRUE(Start({a, b}));
    Begin();
    AnswerInfo(a, 0, 0);
    EXPECT_EQ(LastReport(), "a.so 0/0");
    AnswerOk();
    AnswerInfo(b, 1, 7);
    EXPECT_EQ(LastReport(), "b.so 1/7");
    AnswerOk();
    AnswerInfo(b, 2, 9);
    EXPECT_EQ(LastReport(), "b.so 2/7");
}

TEST_F(ExternalScanSteps, APluginIsPendingUntilItsVeryLocatorIsReported)
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

TEST_F(ExternalScanSteps, EachScannersCountIsAddedToWhatWasDoneWhenTheOneBeforeEnded)
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

TEST_F(ExternalScanSteps, ASecondScanOfOneObjectKnowsNothingOfTheFirst)
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
    // A scanner that dies at nothing, and one that goes on.
    AnswerOk();
    connection->LoseScanner();
    RunPosted();
    EXPECT_EQ(Launches(), 5);
    EXPECT_THAT(AllBanned(), ElementsAre(a, b));
    Begin();
    EXPECT_EQ(ListSent(), "[[" + Quoted(d) + "," + Quoted(a) + "]]");
    AnswerInfo(d, 0, 2);
    EXPECT_EQ(LastReport(), "d.so 0/2");
    AnswerOk();
    AnswerInfo(none, 1, 2, false);
    EXPECT_EQ(LastReport(), endReport);
    EXPECT_EQ(EndReports(), 2);
}

TEST_F(ExternalScanSteps, ASecondScanBlamesNobodyForWhatTheFirstWasAt)
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
}

TEST_F(ExternalScanSteps, AStartLeavesAnOlderScannerRunningAndForgetsItsHandle)
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

TEST_F(ExternalScanSteps, ARestartLeavesAScannerThatHasOnlyClosedItsConnectionRunning)
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

TEST_F(ExternalScanSteps, ARestartThatFailsSaysWhy)
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

} // namespace
} // namespace zetaudiopluginhostui
