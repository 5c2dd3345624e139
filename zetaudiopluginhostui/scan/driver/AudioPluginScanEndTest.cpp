// How a scan ends and what it leaves, also when it is refused and when an exception ends it.
#include <stdexcept>
#include <thread>

#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetaudiopluginhostui/ScanLimits.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zettesting/ScopedFaults.h>

#include "testing/AudioPluginScanFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using zetaudiofilterhost::TechnologyType;

class AudioPluginScanEndTest : public AudioPluginScanFixture
{
  protected:
    const ScanEnd cancelled{ScanEnd::How::Cancelled, {}};
};

TEST_F(AudioPluginScanEndTest, AScanOfEverythingIsDone)
{
    EXPECT_EQ(scan->GetEnd(), ScanEnd{});
    atSignal = cancelled;
    Scan({MakeFile("a.so")});
    EXPECT_EQ(atSignal, ScanEnd{});
    Script(1, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    atSignal = cancelled;
    Scan({}, true);
    EXPECT_EQ(scan->GetEnd(), ScanEnd{});
    EXPECT_EQ(atSignal, ScanEnd{});
}

TEST_F(AudioPluginScanEndTest, ACancelledScanSaysSoUntilTheNextOneAndBeforeTheSignal)
{
    const auto a = MakeFile("a.so");
    shown.onStep = [] { return true; };
    Scan({a});
    EXPECT_EQ(scan->GetEnd(), cancelled);
    EXPECT_EQ(atSignal, cancelled);

    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true), "hold"});
    const auto other = std::make_shared<AudioPluginScan>(nullptr);
    atSignal = {};
    other->ScanForPlugins(nullptr, {a, MakeFile("b.so")}, false, true, true);
    EXPECT_EQ(other->GetEnd(), cancelled);
    EXPECT_EQ(atSignal, cancelled);

    shown.onStep = {};
    Scan({a});
    EXPECT_EQ(scan->GetEnd(), ScanEnd{});
    EXPECT_EQ(other->GetEnd(), cancelled);
    EXPECT_EQ(AudioPluginScan::GetLastEnd(), ScanEnd{});
    EXPECT_EQ(atSignal, ScanEnd{});
}

TEST_F(AudioPluginScanEndTest, AScanWhoseScannersNeverGetOnSaysThatItGaveUpAndWhy)
{
    zetcore::debug::DebugDatabase::Instance().SetEntry(restartLimitKey, "2");
    for (int scanner = 1; scanner <= 4; ++scanner)
        Script(scanner, {"listen", "die"});
    Scan({MakeFile("a.so")}, true);
    EXPECT_EQ(scan->GetEnd().how, ScanEnd::How::GaveUp);
    EXPECT_THAT(scan->GetEnd().reason, HasSubstr("2 times"));
    EXPECT_EQ(atSignal, scan->GetEnd());
    EXPECT_EQ(Launches(), 3);
}

TEST_F(AudioPluginScanEndTest, AScanWhoseScannerCouldNotBeReplacedSaysSoAlthoughTheUserHadToCloseIt)
{
    const auto a = MakeFile("a.so");
    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true), "die"});
    Script(2, {"dead", "wait end"});
    const std::string gone = Path(a) + " (the scanner could not be started again, please cancel)";
    constexpr int mostLooks = 200;
    int looks = 0;
    // The user cancels when that is shown. A dialog that never tells must not be waited for.
    shown.onInput = [&] {
        return (!shown.extraTexts.empty() && shown.extraTexts.back() == gone) ||
               (AnyTraced("does not answer at port") && ++looks > mostLooks);
    };
    zetcore::debug::SetMasterTraceVolume(1);
    const zettesting::ScopedFaults faults("dialog.patience:1:late=4");
    Scan({a, MakeFile("b.so")}, true);
    EXPECT_THAT(shown.extraTexts, Contains(gone));
    EXPECT_EQ(scan->GetEnd().how, ScanEnd::How::GaveUp);
    EXPECT_THAT(scan->GetEnd().reason, HasSubstr("does not answer at port"));
    EXPECT_TRUE(ScannersEnd());
}

TEST_F(AudioPluginScanEndTest, ASlotOfTheChangedSignalKnowsWhichScanItWasAndOfWhichPlugins)
{
    const unsigned before = AudioPluginScan::GetScanCount();
    const auto a = MakeFile("a.so");
    std::vector<PluginLocator> plugins;
    onSignal = [&] { plugins = AudioPluginScan::GetLastPlugins(); };
    Scan({a});
    EXPECT_EQ(AudioPluginScan::GetScanCount(), before + 1);
    EXPECT_THAT(plugins, ElementsAre(a));
    Script(1, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    Scan({}, true);
    EXPECT_EQ(AudioPluginScan::GetScanCount(), before + 2);
    EXPECT_THAT(plugins, IsEmpty());
}

/// The registry knows one plug-in that is there and one that is gone, and has a folder.
class RefusedScan : public AudioPluginScanEndTest
{
  protected:
    RefusedScan()
    {
        for (const auto type : {TechnologyType::VST, TechnologyType::VST3, TechnologyType::AU})
            registry.GetPluginTechnology(type)->SetPluginDirectories({});
        registry.GetPluginTechnology(TechnologyType::VST)
            ->SetPluginDirectories({zettesting::ToWide(folder / "plugins")});
        std::filesystem::remove(folder / "plugins" / "gone.so");
        zettesting::WriteAll(Marker(), "stale");
    }
    void ExpectThatNothingWasTouched()
    {
        EXPECT_TRUE(IsKnown(here));
        EXPECT_TRUE(IsKnown(gone));
        EXPECT_THAT(registry.PutBackUnreached(), IsEmpty());
        EXPECT_FALSE(std::filesystem::exists(Saved()));
        EXPECT_EQ(MarkerText(), "stale");
        EXPECT_THAT(shown.calls, IsEmpty());
        EXPECT_EQ(changes, 0);
        EXPECT_EQ(Launches(), 0);
        EXPECT_EQ(AudioPluginScan::GetScanCount(), scansBefore);
        EXPECT_EQ(scan->GetEnd(), ScanEnd{});
    }

    const unsigned scansBefore = AudioPluginScan::GetScanCount();
    const PluginLocator here = MakeKnownFile("here.so");
    const PluginLocator gone = MakeKnownFile("gone.so");
};

TEST_F(AudioPluginScanEndTest, AnObjectOnTheStackScansInEitherProcess)
{
    const auto a = MakeKnownFile("a.so");
    AudioPluginScan onTheStack(nullptr);
    for (int launch = 1; launch <= 2; ++launch) {
        Script(launch,
               {"listen", "ok", "ok", Info(a, 0, 1, true), Result(a, L"found"), Info(none, 1, 1, false)});
        onTheStack.ScanForPlugins(nullptr, {a}, false, true, true);
        EXPECT_EQ(changes, launch);
        ASSERT_TRUE(IsKnown(a));
        EXPECT_EQ(registry.Find(a)->GetName(), L"found");
        EXPECT_EQ(onTheStack.GetEnd(), ScanEnd{});
        EXPECT_EQ(onTheStack.SharedThis(), nullptr) << "nothing holds it after the scan";
    }
    onTheStack.ScanForPlugins(nullptr, {a}, false, true, false);
    EXPECT_EQ(changes, 3);
}

TEST_F(AudioPluginScanEndTest, TheProgressCallbackGetsEachPluginWithWhatIsKnownOfTheOneBefore)
{
    const auto a = MakeFile("a.so");
    const auto b = MakeFile("b.so");
    // A report tells how far the scan is when it is delivered, so the scanner waits for it.
    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true), "wait told 1", Result(a, L"found"),
               Info(none, 0, 2, true), "ok", Info(b, 1, 2, true), "wait told 2", Result(b, L"also"),
               Info(none, 2, 2, false)});
    std::vector<std::string> told;
    scan->SetProgressCallback([&](const PluginLocator& plugin, std::size_t done, std::size_t total) {
        told.push_back(Path(plugin) + (IsKnown(a) ? " after a " : " ") + std::to_string(done) + "/" +
                       std::to_string(total));
        Touch("told " + std::to_string(told.size()));
    });
    Scan({a, b}, true);
    EXPECT_THAT(told, ElementsAre(Path(a) + " 0/2", Path(b) + " after a 1/2"));
    told.clear();
    Scan({a, b});
    EXPECT_THAT(told, ElementsAre(Path(a) + " 0/2", Path(b) + " after a 1/2"));
    told.clear();
    scan->SetProgressCallback(nullptr);
    Scan({a, b});
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(RefusedScan, AnotherThreadThanTheMainOneIsToldTheRule)
{
    Preferences operation(nullptr, nullptr);
    std::vector<std::string> errors;
    const auto note = [&errors](const auto& call) {
        try {
            call();
            errors.emplace_back("nothing was thrown");
        } catch (const std::logic_error& error) {
            errors.emplace_back(error.what());
        }
    };
    std::thread([&] {
        for (const bool useSeparateProcess : {false, true}) {
            note([&] { Scan({here}, useSeparateProcess); });
            note([&] { scan->ScanForPlugins(nullptr, true, false, true, useSeparateProcess); });
            note([&] {
                scan->ScanForPluginsWithin(operation, nullptr, {here}, false, true, useSeparateProcess);
            });
        }
    }).join();
    EXPECT_EQ(errors.size(), 6u);
    EXPECT_THAT(errors, ::testing::Each(HasSubstr("must be called on the main thread")));
    ExpectThatNothingWasTouched();
}

TEST_F(RefusedScan, WithoutAMainThreadAnyThreadMayScanInItsProcess)
{
    zetcore::threads::RegisterMainThread(nullptr);
    Scan({here});
    EXPECT_EQ(changes, 1);
}

struct HostsError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// Plug-in a is scanned before the exception; b and c are not.
class ScanThatThrows : public AudioPluginScanEndTest
{
  protected:
    template<typename Exception>
    void ExpectThrow(bool useSeparateProcess)
    {
        EXPECT_THROW(Scan({a, b, c}, useSeparateProcess), Exception);
        EXPECT_TRUE(IsKnown(a));
        for (const auto& plugin : {a, b, c})
            EXPECT_TRUE(IsSaved(plugin)) << Path(plugin);
        EXPECT_EQ(NameOf(b), L"before") << "the record from before is back";
        EXPECT_EQ(NameOf(c), L"before");
        EXPECT_FALSE(std::filesystem::exists(Marker()));
        EXPECT_EQ(shown.calls.back(), "hide");
        EXPECT_EQ(shown.fullBars, 0) << "the scan did not reach its end";
        EXPECT_THAT(shown.Starting("caution"), IsEmpty());
        EXPECT_EQ(scan->GetEnd().how, ScanEnd::How::GaveUp);
        EXPECT_EQ(AudioPluginScan::GetLastEnd(), scan->GetEnd());
    }
    std::wstring NameOf(const PluginLocator& plugin) const
    {
        const auto info = registry.Find(plugin);
        return info ? info->GetName() : L"nothing of that name";
    }
    PluginLocator MakeNamedFile(const std::string& name)
    {
        const auto plugin = MakeKnownFile(name);
        registry.Find(plugin)->SetName(L"before");
        return plugin;
    }

    const PluginLocator a = MakeNamedFile("a.so");
    const PluginLocator b = MakeNamedFile("b.so");
    const PluginLocator c = MakeNamedFile("c.so");
};

TEST_F(ScanThatThrows, InThisProcessPutsBackWhatWasNotReachedAndSaves)
{
    int steps = 0;
    shown.onStep = [&]() -> bool {
        if (++steps == 2)
            throw HostsError("the host's own trouble");
        return false;
    };
    ExpectThrow<HostsError>(false);
    EXPECT_EQ(scan->GetEnd().reason, "the host's own trouble");
    EXPECT_EQ(changes, 0);
    EXPECT_NE(NameOf(a), L"before");
    // The object can scan again.
    shown.onStep = {};
    Scan({a, b, c});
    EXPECT_EQ(shown.fullBars, 1);
    EXPECT_EQ(scan->GetEnd(), ScanEnd{});
    EXPECT_NE(NameOf(b), L"before");
}

TEST_F(ScanThatThrows, ASeparateProcessIsEndedToo)
{
    Script(1, {"listen", "ok", "ok", Info(a, 0, 3, true), "wait seen", Result(a, L"found"),
               Info(b, 1, 3, true), "hold"});
    int steps = 0;
    shown.onStep = [&]() -> bool {
        if (++steps == 2)
            throw HostsError("the host's own trouble");
        Touch("seen");
        return false;
    };
    ExpectThrow<HostsError>(true);
    EXPECT_EQ(NameOf(a), L"found");
    EXPECT_EQ(scan->GetEnd().reason, "the host's own trouble");
    EXPECT_EQ(changes, 0);
    EXPECT_TRUE(ScannersEnd());
    EXPECT_EQ(Launches(), 1);
    EXPECT_FALSE(zetaudiopluginhost::BannedPluginManager::GetInstance()->IsBanned(b));
}

TEST_F(ScanThatThrows, TheProgressCallbackMayThrowInEitherProcess)
{
    Script(1, {"listen", "ok", "ok", Info(a, 0, 3, true), Result(a, L"found"), Info(b, 1, 3, true), "hold"});
    scan->SetProgressCallback([&](const PluginLocator& plugin, std::size_t, std::size_t) {
        if (plugin == b)
            throw HostsError("the callback's trouble");
    });
    ExpectThrow<HostsError>(true);
    EXPECT_EQ(scan->GetEnd().reason, "the callback's trouble");
    EXPECT_TRUE(ScannersEnd());
    EXPECT_EQ(changes, 0);
    ExpectThrow<HostsError>(false);
    scan->SetProgressCallback(nullptr);
    Scan({a, b, c});
    EXPECT_EQ(scan->GetEnd(), ScanEnd{});
}

TEST_F(ScanThatThrows, ACallbackThatHasThrownIsNotCalledAgain)
{
    Script(1, {"listen", "ok", "ok", Info(a, 0, 3, true), Result(a, L"found"), Info(b, 1, 3, true), "ok",
               Info(c, 2, 3, true), "touch c is reported", "hold"});
    std::vector<std::string> told;
    scan->SetProgressCallback([&](const PluginLocator& plugin, std::size_t, std::size_t) {
        told.push_back(Path(plugin));
        if (plugin != b)
            return;
        // The next report is in the queue then.
        WaitForFile("c is reported");
        throw HostsError("the callback's trouble");
    });
    ExpectThrow<HostsError>(true);
    EXPECT_THAT(told, ElementsAre(Path(a), Path(b)));
}

TEST_F(ScanThatThrows, AFileErrorOfTheHostsIsNotTakenForOneOfOurs)
{
    Script(1, {"listen", "ok", "ok", Info(a, 0, 3, true), "hold"});
    shown.onStep = []() -> bool {
        throw zetcore::filesupport::file_exception("read", L"/host",
                                                   std::make_error_code(std::errc::io_error));
    };
    ExpectThrow<zetcore::filesupport::file_exception>(true);
    EXPECT_TRUE(ScannersEnd());
}

TEST_F(ScanThatThrows, SomethingThatIsNoStandardExceptionPassesToo)
{
    shown.onStep = []() -> bool { throw 42; };
    ExpectThrow<int>(false);
    EXPECT_NE(scan->GetEnd().reason, "");
}

TEST_F(ScanThatThrows, ASlotOfTheChangedSignalMayThrow)
{
    shown.onStep = [] { return true; };
    onSignal = [] { throw HostsError("a slot's trouble"); };
    ExpectThrow<HostsError>(false);
    EXPECT_EQ(scan->GetEnd().reason, "a slot's trouble");
    EXPECT_EQ(changes, 1);
}

TEST_F(ScanThatThrows, APreferencesFolderThatCannotBeWrittenDoesNotHideTheException)
{
    shown.onStep = [&]() -> bool {
        MakePrefsUnwritable();
        throw HostsError("the host's own trouble");
    };
    EXPECT_THROW(Scan({a, b, c}), HostsError);
    for (const auto& plugin : {a, b, c})
        EXPECT_TRUE(IsKnown(plugin));
    EXPECT_THAT(shown.Starting("caution"), IsEmpty());
}

} // namespace
} // namespace zetaudiopluginhostui
