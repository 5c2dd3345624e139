// The driver scans in the scanner process.
#include <zetaudiopluginhostui/AudioPluginScan.h>

#include <zetcore/debug/Trace.h>

#include "testing/AudioPluginScanFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::BannedPluginManager;

class AudioPluginScanExternalTest : public AudioPluginScanFixture
{};

TEST_F(AudioPluginScanExternalTest, AnEmptyListShowsAndClosesTheDialogDeletesAStaleMarkerSavesAndSignals)
{
    Script(1, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    zettesting::WriteAll(Marker(), "VST|/stale.so|");
    Scan({}, true);
    EXPECT_THAT(shown.calls, ElementsAre("show Scanning Audio Plug-Ins", "hide"));
    EXPECT_FALSE(std::filesystem::exists(Marker()));
    EXPECT_TRUE(std::filesystem::exists(Saved()));
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(ScannersEnd());
}

TEST_F(AudioPluginScanExternalTest, APreferencesFolderThatCannotBeWrittenIsReportedOnceAfterTheScan)
{
    MakePrefsUnwritable();
    Script(1, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    onSignal = [&] { shown.calls.emplace_back("signal"); };
    Scan({}, true);
    EXPECT_THAT(shown.calls, ElementsAre("show Scanning Audio Plug-Ins", "hide", "signal", Caution()));
}

TEST_F(AudioPluginScanExternalTest, ASaveThatFailsOnlyAtTheBeginningIsReportedAfterTheScan)
{
    const auto a = MakeFile("a.so");
    MakePrefsUnwritable();
    Script(1, {"listen", "ok", "ok", Info(a, 0, 1, true), "wait seen", "ok", Info(none, 1, 1, false)});
    shown.onStep = [&] {
        MakePrefsWritable();
        Touch("seen");
        return false;
    };
    onSignal = [&] { shown.calls.emplace_back("signal"); };
    Scan({a}, true);
    EXPECT_THAT(shown.calls, ElementsAre("show Scanning Audio Plug-Ins", "step " + Path(a) + " (0/1)", "hide",
                                         "signal", Caution()));
    EXPECT_TRUE(std::filesystem::exists(Saved()));
}

TEST_F(AudioPluginScanExternalTest, ASaveThatFailsOnlyAtTheEndIsReportedAfterTheScan)
{
    Script(1, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    shown.onHide = [&] { MakePrefsUnwritable(); };
    onSignal = [&] { shown.calls.emplace_back("signal"); };
    Scan({}, true);
    EXPECT_THAT(shown.calls, ElementsAre("show Scanning Audio Plug-Ins", "hide", "signal", Caution()));
}

TEST_F(AudioPluginScanExternalTest, StartsFromTheSavedRegistryAndPassesTheListsAndFlags)
{
    const auto a = MakeKnownFile("a.so");
    const auto known = MakeKnownFile("known.so");
    Script(1, {"listen", "ok", "ok", Info(a, 0, 1, true), "ok", Info(none, 1, 1, false)});
    bool savedKnown = false;
    bool savedScanned = true;
    shown.onStep = [&] {
        savedKnown = IsSaved(known);
        savedScanned = IsSaved(a);
        return false;
    };
    scan->ScanForPlugins(nullptr, {a}, true, false, true);
    EXPECT_TRUE(savedKnown);
    EXPECT_FALSE(savedScanned);
    const auto file = [this](const std::wstring& name) { return JsonText(zettesting::ToWide(prefs / name)); };
    const std::wstring settings = PluginModuleInfoManager::GetSettingsFileName();
    EXPECT_EQ(Log(1).at(1), "Connect [" + file(settings) + "," +
                                file(BannedPluginManager::GetSettingsFileName()) + "," +
                                file(BannedPluginManager::GetPermanentBannedSettingsFileName()) + "," +
                                file(settings + L".scan") + ",true,false]");
    EXPECT_EQ(Log(1).at(2), "BeginScanForPlugins [[" + Quoted(a) + "]]");
}

TEST_F(AudioPluginScanExternalTest, ShowsNameAndSubcomponentAndWritesNoMarker)
{
    const auto a = MakeFile("a.so");
    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true, ": Hall"), "wait seen", Result(a, L"Reverb"),
               Info(none, 2, 2, false)});
    bool marker = true;
    shown.onStep = [&] {
        marker = std::filesystem::exists(Marker());
        Touch("seen");
        return false;
    };
    Scan({a}, true);
    EXPECT_THAT(shown.calls,
                ElementsAre("show Scanning Audio Plug-Ins", "step " + Path(a) + ": Hall (0/2)", "hide"));
    EXPECT_FALSE(marker);
    ASSERT_TRUE(IsKnown(a));
    EXPECT_TRUE(IsSaved(a));
    EXPECT_TRUE(ScannersEnd());
}

TEST_F(AudioPluginScanExternalTest, Progress1OfTotal1IsAnOrdinaryReportAndOnly1Of0ClosesTheDialog)
{
    const auto a = MakeFile("a.so");
    Script(1, {"listen", "ok", "ok", Info(a, 1, 1, true), "wait seen", "ok", Info(none, 1, 1, false)});
    shown.onStep = [&] {
        Touch("seen");
        return false;
    };
    Scan({a}, true);
    EXPECT_THAT(shown.calls,
                ElementsAre("show Scanning Audio Plug-Ins", "step " + Path(a) + " (1/1)", "hide"));
}

TEST_F(AudioPluginScanExternalTest, ProgressOfNothingAtTheBeginningIsAnOrdinaryReport)
{
    const auto a = MakeFile("a.so");
    Script(1, {"listen", "ok", "ok", Info(a, 0, 0, true), "wait seen", "ok", Info(none, 1, 1, false)});
    shown.onStep = [&] {
        Touch("seen");
        return false;
    };
    Scan({a}, true);
    EXPECT_THAT(shown.calls,
                ElementsAre("show Scanning Audio Plug-Ins", "step " + Path(a) + " (0/0)", "hide"));
}

TEST_F(AudioPluginScanExternalTest, AReportOfProgress1OfTotal0ClosesTheDialogAlthoughTheScannerGoesOn)
{
    const auto a = MakeFile("a.so");
    Script(1, {"listen", "ok", "ok", Info(a, 1, 0, true), "hold"});
    Scan({a}, true);
    EXPECT_THAT(shown.calls, ElementsAre("show Scanning Audio Plug-Ins", "hide"));
    EXPECT_TRUE(ScannersEnd());
}

TEST_F(AudioPluginScanExternalTest, AReportWithoutADialogIsNotShown)
{
    AudioPluginScanAccess::ReportExternal(*scan, 0, 1, nullptr);
    AudioPluginScanAccess::ReportExternal(*scan, 1, 0, nullptr);
    EXPECT_THAT(shown.calls, IsEmpty());
}

TEST_F(AudioPluginScanExternalTest, CancellingEndsTheScannerBansNothingAndPutsNothingBack)
{
    const auto a = MakeKnownFile("a.so");
    const auto b = MakeKnownFile("b.so");
    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true), "hold"});
    shown.onStep = [] { return true; };
    Scan({a, b}, true);
    EXPECT_TRUE(ScannersEnd());
    EXPECT_EQ(Launches(), 1);
    EXPECT_FALSE(BannedPluginManager::GetInstance()->IsBanned(a));
    EXPECT_EQ(changes, 1);
    for (const auto& unreached : {a, b}) {
        EXPECT_FALSE(IsKnown(unreached));
        EXPECT_FALSE(IsSaved(unreached));
    }
    EXPECT_EQ(registry.PutBackUnreached(), (std::vector<PluginLocator>{a, b}));
}

TEST_F(AudioPluginScanExternalTest, ACancelledScanIsSavedAtItsEnd)
{
    const auto a = MakeFile("a.so");
    const auto late = MakeFile("late.so");
    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true), "hold"});
    shown.onStep = [] { return true; };
    shown.onHide = [&] { registry.AddModule(std::make_shared<zetaudiofilterhost::PluginModuleInfo>(late)); };
    Scan({a}, true);
    EXPECT_EQ(scan->GetEnd().how, ScanEnd::How::Cancelled);
    EXPECT_TRUE(IsSaved(late));
}

TEST_F(AudioPluginScanExternalTest, ACancelledScanDoesNotCancelTheNextInThisProcess)
{
    const auto a = MakeFile("a.so");
    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true), "hold"});
    shown.onStep = [] { return true; };
    Scan({a}, true);
    shown.onStep = {};
    Scan({a});
    EXPECT_TRUE(IsKnown(a));
}

TEST_F(AudioPluginScanExternalTest, OneSessionServesAllScansOfAnObjectAndOfItsCopies)
{
    const auto* const session = AudioPluginScanAccess::Session(*scan);
    for (const int number : {1, 2}) {
        Script(number, {"listen", "ok", "ok", Info(none, 0, 0, false)});
        Scan({}, true);
        EXPECT_EQ(Launches(), number);
        EXPECT_EQ(AudioPluginScanAccess::Session(*scan), session);
    }
    const auto copy = std::make_shared<AudioPluginScan>(*scan);
    EXPECT_EQ(AudioPluginScanAccess::Session(*copy), session);
    const auto assigned = std::make_shared<AudioPluginScan>(nullptr);
    EXPECT_NE(AudioPluginScanAccess::Session(*assigned), session);
    *assigned = *scan;
    EXPECT_EQ(AudioPluginScanAccess::Session(*assigned), session);

    scan.reset();
    Script(3, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    copy->ScanForPlugins(nullptr, {}, false, true, true);
    EXPECT_EQ(Launches(), 3);
    EXPECT_EQ(changes, 3);
}

/// Lets the scanner answer after all posted calls have run, and waits for the answer. So the call that the
/// answer posts runs only after the scan.
class LateLoop : public zetcore::threads::PlainEventLoop
{
  public:
    void Run(std::chrono::steady_clock::time_point deadline) override
    {
        PlainEventLoop::Run(deadline);
        if (onDrained)
            std::exchange(onDrained, {})();
    }
    std::function<void()> onDrained;
};

TEST_F(AudioPluginScanExternalTest, AReportThatComesWhenTheDriverHasGoneIsForNobody)
{
    const auto late = std::make_shared<LateLoop>();
    zetcore::threads::RegisterMainThread(late);
    loop = late;
    zetcore::debug::SetMasterTraceVolume(6);
    const auto a = MakeFile("a.so");
    Script(1, {"listen", "ok", "wait go", "ok", Info(a, 0, 2, true), "hold"});
    late->onDrained = [&] {
        Touch("go");
        // The session posts its report before it sends this request.
        WaitUntil([&] { return AnyTraced("SendScanOneEntity"); });
        WaitUntil([&] { return Log(1).size() == 5; });
    };
    shown.onInput = [] { return true; };
    Scan({a}, true);
    ASSERT_FALSE(late->onDrained);

    // A copy keeps the session, and its posted call, alive.
    const auto copy = std::make_shared<AudioPluginScan>(*scan);
    const std::weak_ptr<AudioPluginScan> watch = scan;
    scan.reset();
    EXPECT_TRUE(watch.expired()) << "the session's callback must not own the driver";
    shown.calls.clear();
    shown.extraTexts.clear();
    loop->Run(std::chrono::steady_clock::time_point::max());
    EXPECT_THAT(shown.calls, IsEmpty());
    EXPECT_THAT(shown.extraTexts, IsEmpty());
}

TEST_F(AudioPluginScanExternalTest, TheHostMayLetGoOfTheScanInTheMiddleOfIt)
{
    const auto a = MakeFile("a.so");
    Script(1, {"listen", "ok", "ok", Info(a, 0, 1, true), "wait seen", "ok", Info(none, 1, 1, false)});
    shown.onStep = [&] {
        scan.reset();
        Touch("seen");
        return false;
    };
    AudioPluginScan& running = *scan;
    const std::weak_ptr<AudioPluginScan> watch = scan;
    // Nothing else would close the dialog of a scan that is gone.
    bool goneTooEarly = false;
    shown.onInput = [&] { return goneTooEarly = watch.expired(); };
    running.ScanForPlugins(nullptr, {a}, false, true, true);
    EXPECT_FALSE(goneTooEarly);
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(watch.expired());
    EXPECT_TRUE(ScannersEnd());
}

} // namespace
} // namespace zetaudiopluginhostui
