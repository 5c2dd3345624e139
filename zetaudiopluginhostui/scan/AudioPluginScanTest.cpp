#include <zetaudiopluginhostui/AudioPluginScan.h>

#include <gmock/gmock.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhostui/ScanLimits.h>
#include <zetcore/config/ClientName.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/filesupport/CommonDirs.h>
#include <zetcore/filesupport/Dir.h>
#include <zetcore/string/Utf.h>

#include "testing/RecordingPresentation.h"
#include "testing/ScanFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiofilterhost::TechnologyType;
using zetaudiopluginhost::BannedPluginManager;

class AudioPluginScanTest : public ScanFixture
{
  protected:
    AudioPluginScanTest()
    {
        connection = registry.GetPluginInfosChangedSignal().connect([this] { ++changes; });
    }

    /// A file with a plug-in's name in `plugins`, which is no plug-in: a scan loads nothing of it.
    PluginLocator MakeFile(const std::string& name)
    {
        std::filesystem::create_directories(folder / "plugins");
        zettesting::WriteAll(folder / "plugins" / name, "text");
        return Plugin("plugins/" + name);
    }
    void Scan(const std::vector<PluginLocator>& plugins, bool useSeparateProcess = false)
    {
        scan->ScanForPlugins(nullptr, plugins, false, true, useSeparateProcess);
    }
    std::filesystem::path Marker() const { return prefs / "ScannedPluginPath.txt"; }
    std::filesystem::path Saved() const { return prefs / PluginModuleInfoManager::GetSettingsFileName(); }
    /// What a host would find if it were started now.
    bool IsSaved(const PluginLocator& plugin) const
    {
        PluginModuleInfoManager loaded;
        loaded.LoadConfiguration(zetcore::filesupport::File(zettesting::ToWide(Saved())));
        return loaded.Find(plugin) != nullptr;
    }
    /// Nothing can be written there from now on.
    void MakePrefsUnwritable()
    {
        zettesting::WriteAll(folder / "file", "");
        zetcore::filesupport::Dir::SetPrefDir(zettesting::ToWide(folder / "file" / "prefs"));
    }
    static std::string Path(const PluginLocator& plugin)
    {
        return zetcore::string::UTF16to8(plugin.GetPath());
    }
    static std::string Caution()
    {
        return "caution " + zetcore::string::UTF16to8(zetcore::config::GetClientName()) +
               ": Unable to load third-party audio plug-ins.";
    }

    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
    RecordingPresentation shown;
    int changes = 0;
    zetcore::signals::ScopedConnection connection;
    const PluginLocator none;
    std::shared_ptr<AudioPluginScan> scan = std::make_shared<AudioPluginScan>(nullptr);
};

TEST_F(AudioPluginScanTest, TheMarkerIsAFileOfThePreferencesFolder)
{
    EXPECT_EQ(AudioPluginScan::GetLastScannedPluginPath().FullPath(), zettesting::ToWide(Marker()));
}

TEST_F(AudioPluginScanTest, AnEmptyListShowsAndClosesTheDialogDeletesAStaleMarkerSavesAndSignals)
{
    zettesting::WriteAll(Marker(), "VST|/stale.so|");
    Scan({});
    EXPECT_THAT(shown.calls, ElementsAre("show Scanning Audio Plug-Ins", "hide"));
    EXPECT_FALSE(std::filesystem::exists(Marker()));
    EXPECT_TRUE(std::filesystem::exists(Saved()));
    EXPECT_EQ(changes, 1);
}

TEST_F(AudioPluginScanTest, AnEmptyListDoesTheSameInASeparateProcess)
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

TEST_F(AudioPluginScanTest, ReportsEachPluginBeforeItIsScannedAndKeepsWhatWasFound)
{
    const auto a = MakeFile("a.so");
    const auto b = MakeFile("b.so");
    std::vector<bool> known;
    shown.onStep = [&] {
        known.push_back(registry.Find(a) != nullptr);
        return false;
    };
    Scan({a, b});
    EXPECT_THAT(shown.calls, ElementsAre("show Scanning Audio Plug-Ins", "step " + Path(a) + " (0/2)",
                                         "step " + Path(b) + " (1/2)", "hide"));
    EXPECT_THAT(known, ElementsAre(false, true));
    EXPECT_TRUE(IsSaved(a));
    EXPECT_TRUE(IsSaved(b));
    EXPECT_EQ(changes, 1);
}

TEST_F(AudioPluginScanTest, TheMarkerNamesThePluginThatIsAboutToBeLoaded)
{
    const auto a = MakeFile("gr\xc3\xbc\xc3\x9f & 100%.so");
    std::string marker;
    shown.onStep = [&] {
        marker = zettesting::ReadAll(Marker());
        return false;
    };
    Scan({a});
    EXPECT_EQ(marker, zetcore::string::UTF16to8(a.ToString()));
}

TEST_F(AudioPluginScanTest, AfterANormalScanNoMarkerRemains)
{
    Scan({MakeFile("a.so"), MakeFile("b.so")});
    EXPECT_FALSE(std::filesystem::exists(Marker()));
}

TEST_F(AudioPluginScanTest, EverythingFoundSoFarIsSavedBeforeTheNextPluginIsLoaded)
{
    const auto a = MakeFile("a.so");
    const auto b = MakeFile("b.so");
    zetcore::debug::DebugDatabase::Instance().SetEntry("DebugPluginLoading", "true");
    std::vector<bool> savedAtNote;
    // The note comes right before the save, and what was found is there by then: it is kept at once.
    std::vector<PluginLocator> plugins{a, b, MakeFile("c.so")};
    shown.onAlert = [&] { savedAtNote.push_back(IsSaved(a)); };
    Scan(plugins);
    EXPECT_THAT(savedAtNote, ElementsAre(false, true, true));
}

TEST_F(AudioPluginScanTest, ThePluginsToScanLeaveTheRegistryFirst)
{
    const auto a = MakeFile("a.so");
    registry.AddModule(std::make_shared<PluginModuleInfo>(a));
    bool known = true;
    shown.onStep = [&] {
        known = registry.Find(a) != nullptr;
        return false;
    };
    Scan({a});
    EXPECT_FALSE(known);
}

TEST_F(AudioPluginScanTest, WithDebugPluginLoadingOneNoteIsShownForEachPluginBeforeItIsLoaded)
{
    const auto a = MakeFile("a.so");
    const auto b = MakeFile("b.so");
    zetcore::debug::DebugDatabase::Instance().SetEntry("DebugPluginLoading", "true");
    std::vector<bool> known;
    shown.onAlert = [&] { known.push_back(registry.Find(known.empty() ? a : b) != nullptr); };
    Scan({a, b});
    EXPECT_THAT(shown.Starting("note"),
                ElementsAre("note Scanning: " + Path(a), "note Scanning: " + Path(b)));
    EXPECT_THAT(known, ElementsAre(false, false));
}

TEST_F(AudioPluginScanTest, DebugPluginLoadingIsOnOnlyWhenItIsExactlyTrue)
{
    zetcore::debug::DebugDatabase::Instance().SetEntry("DebugPluginLoading", "True");
    Scan({MakeFile("a.so")});
    EXPECT_THAT(shown.Starting("note"), IsEmpty());
}

TEST_F(AudioPluginScanTest, CancelStopsBeforeTheNextPluginIsLoadedAndKeepsWhatWasFound)
{
    const auto a = MakeFile("a.so");
    const auto b = MakeFile("b.so");
    int steps = 0;
    shown.onStep = [&] { return ++steps == 2; };
    Scan({a, b, MakeFile("c.so")});
    EXPECT_EQ(steps, 2);
    EXPECT_TRUE(IsSaved(a));
    EXPECT_FALSE(IsSaved(b));
    EXPECT_FALSE(std::filesystem::exists(Marker()));
    EXPECT_EQ(changes, 1);
}

TEST_F(AudioPluginScanTest, ACancelledScanDoesNotCancelTheNext)
{
    const auto a = MakeFile("a.so");
    shown.onStep = [] { return true; };
    Scan({a});
    EXPECT_EQ(registry.Find(a), nullptr);
    shown.onStep = {};
    Scan({a});
    EXPECT_NE(registry.Find(a), nullptr);
}

TEST_F(AudioPluginScanTest, APreferencesFolderThatCannotBeWrittenIsReportedForEachPluginAndOnceAtTheEnd)
{
    const auto a = MakeFile("a.so");
    const auto b = MakeFile("b.so");
    MakePrefsUnwritable();
    Scan({a, b});
    EXPECT_THAT(shown.Starting("caution"),
                ElementsAre(StartsWith(Caution()), StartsWith(Caution()), StartsWith(Caution())));
    EXPECT_NE(registry.Find(b), nullptr);
    EXPECT_EQ(changes, 1);
}

TEST_F(AudioPluginScanTest, APreferencesFolderThatCannotBeWrittenIsReportedOnceAfterAnExternalScan)
{
    MakePrefsUnwritable();
    Script(1, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    Scan({}, true);
    EXPECT_THAT(shown.calls, ElementsAre("show Scanning Audio Plug-Ins", "hide", StartsWith(Caution())));
}

TEST_F(AudioPluginScanTest, AnExternalScanThatCannotStartShowsNothingButSavesAndSignals)
{
    const auto a = MakeFile("a.so");
    registry.AddModule(std::make_shared<PluginModuleInfo>(a));
    zetcore::filesupport::commondirs::SetExecutableDir(folder.Wide());
    Scan({a}, true);
    EXPECT_THAT(shown.calls, IsEmpty());
    EXPECT_EQ(registry.Find(a), nullptr);
    EXPECT_TRUE(std::filesystem::exists(Saved()));
    EXPECT_FALSE(IsSaved(a));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(scan->GetEnd().how, ScanEnd::How::NotStarted);
}

TEST_F(AudioPluginScanTest, AnOldResultFileThatCannotBeDeletedIsReportedAndNothingIsScanned)
{
    const auto a = MakeFile("a.so");
    const std::wstring settings = PluginModuleInfoManager::GetSettingsFileName();
    std::filesystem::create_directories(prefs / (settings + L".scan") / "not empty");
    Scan({a}, true);
    EXPECT_THAT(shown.calls, ElementsAre(StartsWith(Caution())));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(scan->GetEnd().how, ScanEnd::How::NotStarted);
    EXPECT_NE(scan->GetEnd().reason.find(".scan"), std::string::npos) << scan->GetEnd().reason;
}

TEST_F(AudioPluginScanTest, AnExternalScanStartsFromTheSavedRegistryAndPassesTheListsAndFlags)
{
    const auto a = MakeFile("a.so");
    const auto known = Plugin("known.so");
    registry.AddModule(std::make_shared<PluginModuleInfo>(a));
    registry.AddModule(std::make_shared<PluginModuleInfo>(known));
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

TEST_F(AudioPluginScanTest, AnExternalScanShowsNameAndSubcomponentAndWritesNoMarker)
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
    ASSERT_NE(registry.Find(a), nullptr);
    EXPECT_TRUE(IsSaved(a));
    EXPECT_TRUE(ScannersEnd());
}

TEST_F(AudioPluginScanTest, Progress1OfTotal1IsAnOrdinaryReportAndOnly1Of0ClosesTheDialog)
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

TEST_F(AudioPluginScanTest, AReportOfProgress1OfTotal0ClosesTheDialogAlthoughTheScannerGoesOn)
{
    const auto a = MakeFile("a.so");
    Script(1, {"listen", "ok", "ok", Info(a, 1, 0, true), "hold"});
    Scan({a}, true);
    EXPECT_THAT(shown.calls, ElementsAre("show Scanning Audio Plug-Ins", "hide"));
    EXPECT_TRUE(ScannersEnd());
}

TEST_F(AudioPluginScanTest, CancellingAnExternalScanEndsTheScannerAndBansNothing)
{
    const auto a = MakeFile("a.so");
    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true), "hold"});
    shown.onStep = [] { return true; };
    Scan({a, MakeFile("b.so")}, true);
    EXPECT_TRUE(ScannersEnd());
    EXPECT_EQ(Launches(), 1);
    EXPECT_FALSE(BannedPluginManager::GetInstance()->IsBanned(a));
    EXPECT_EQ(changes, 1);
}

TEST_F(AudioPluginScanTest, AScanObjectThatNoSharedPointerOwnsCannotScanInASeparateProcess)
{
    AudioPluginScan onTheStack(nullptr);
    EXPECT_THROW(onTheStack.ScanForPlugins(nullptr, {}, false, true, true), std::runtime_error);
    EXPECT_EQ(Launches(), 0);
    onTheStack.ScanForPlugins(nullptr, {}, false, true, false);
    EXPECT_EQ(changes, 1);
}

TEST_F(AudioPluginScanTest, ACopyScansLikeItsOriginal)
{
    const auto copy = std::make_shared<AudioPluginScan>(*scan);
    scan.reset();
    Script(1, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    copy->ScanForPlugins(nullptr, {}, false, true, true);
    EXPECT_EQ(Launches(), 1);
    EXPECT_EQ(changes, 1);
}

TEST_F(AudioPluginScanTest, AScanOfEverythingIsDone)
{
    std::vector<ScanEnd> atSignal;
    const zetcore::signals::ScopedConnection ends = registry.GetPluginInfosChangedSignal().connect(
        [&] { atSignal.push_back(AudioPluginScan::GetLastEnd()); });
    EXPECT_EQ(scan->GetEnd(), ScanEnd{});
    Scan({MakeFile("a.so")});
    Script(1, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    Scan({}, true);
    EXPECT_EQ(scan->GetEnd(), ScanEnd{});
    EXPECT_THAT(atSignal, ElementsAre(ScanEnd{}, ScanEnd{}));
}

TEST_F(AudioPluginScanTest, ACancelledScanSaysSoUntilTheNextOneAndBeforeTheSignal)
{
    const ScanEnd cancelled{ScanEnd::How::Cancelled, {}};
    std::vector<ScanEnd> atSignal;
    const zetcore::signals::ScopedConnection ends = registry.GetPluginInfosChangedSignal().connect(
        [&] { atSignal.push_back(AudioPluginScan::GetLastEnd()); });
    const auto a = MakeFile("a.so");
    shown.onStep = [] { return true; };
    Scan({a});
    EXPECT_EQ(scan->GetEnd(), cancelled);

    Script(1, {"listen", "ok", "ok", Info(a, 0, 2, true), "hold"});
    const auto other = std::make_shared<AudioPluginScan>(nullptr);
    other->ScanForPlugins(nullptr, {a, MakeFile("b.so")}, false, true, true);
    EXPECT_EQ(other->GetEnd(), cancelled);

    shown.onStep = {};
    Scan({a});
    EXPECT_EQ(scan->GetEnd(), ScanEnd{});
    EXPECT_EQ(other->GetEnd(), cancelled);
    EXPECT_EQ(AudioPluginScan::GetLastEnd(), ScanEnd{});
    EXPECT_THAT(atSignal, ElementsAre(cancelled, cancelled, ScanEnd{}));
}

TEST_F(AudioPluginScanTest, AScanWhoseScannersNeverGetOnSaysThatItGaveUp)
{
    zetcore::debug::DebugDatabase::Instance().SetEntry(mostFruitlessRestarts, "2");
    for (int scanner = 1; scanner <= 4; ++scanner)
        Script(scanner, {"listen", "die"});
    ScanEnd atSignal;
    const zetcore::signals::ScopedConnection ends =
        registry.GetPluginInfosChangedSignal().connect([&] { atSignal = AudioPluginScan::GetLastEnd(); });
    Scan({MakeFile("a.so")}, true);
    EXPECT_EQ(scan->GetEnd().how, ScanEnd::How::GaveUp);
    EXPECT_EQ(atSignal, scan->GetEnd());
    EXPECT_EQ(Launches(), 3);
}

TEST_F(AudioPluginScanTest, ASlotOfTheChangedSignalKnowsWhichScanItWasAndOfWhichPlugins)
{
    const unsigned before = AudioPluginScan::GetScanCount();
    const auto a = MakeFile("a.so");
    std::vector<PluginLocator> atSignal;
    const zetcore::signals::ScopedConnection ends =
        registry.GetPluginInfosChangedSignal().connect([&] { atSignal = AudioPluginScan::GetLastPlugins(); });
    Scan({a});
    EXPECT_EQ(AudioPluginScan::GetScanCount(), before + 1);
    EXPECT_THAT(atSignal, ElementsAre(a));
    Script(1, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    Scan({}, true);
    EXPECT_EQ(AudioPluginScan::GetScanCount(), before + 2);
    EXPECT_THAT(atSignal, ElementsAre());
}

class CollectingScanTest : public AudioPluginScanTest
{
  protected:
    CollectingScanTest()
    {
        for (const auto type : {TechnologyType::VST, TechnologyType::VST3, TechnologyType::AU})
            registry.GetPluginTechnology(type)->SetPluginDirectories({});
        std::filesystem::create_directories(folder / "plugins");
        registry.GetPluginTechnology(TechnologyType::VST)
            ->SetPluginDirectories({zettesting::ToWide(folder / "plugins")});
    }
    void ScanAll(bool rescanExisting)
    {
        shown.calls.clear();
        scan->ScanForPlugins(nullptr, rescanExisting, false, true, false);
    }
};

TEST_F(CollectingScanTest, ScansNewPluginsOnlyUnlessExistingOnesAreToBeScannedAgain)
{
    const auto a = MakeFile("a" ZET_TEST_MODULE_SUFFIX);
    ScanAll(false);
    EXPECT_THAT(shown.Starting("step"), ElementsAre("step " + Path(a) + " (0/1)"));
    ScanAll(false);
    EXPECT_THAT(shown.Starting("step"), IsEmpty());
    ScanAll(true);
    EXPECT_THAT(shown.Starting("step"), SizeIs(1));
}

TEST_F(CollectingScanTest, PluginsWhoseFilesAreGoneLeaveTheRegistryBeforeTheScan)
{
    const auto a = MakeFile("a" ZET_TEST_MODULE_SUFFIX);
    const auto gone = MakeFile("gone" ZET_TEST_MODULE_SUFFIX);
    ScanAll(false);
    ASSERT_NE(registry.Find(gone), nullptr);
    std::filesystem::remove(folder / "plugins" / ("gone" ZET_TEST_MODULE_SUFFIX));
    MakeFile("new" ZET_TEST_MODULE_SUFFIX);
    bool knownDuringScan = true;
    shown.onStep = [&] {
        knownDuringScan = registry.Find(gone) != nullptr;
        return false;
    };
    ScanAll(false);
    EXPECT_FALSE(knownDuringScan);
    EXPECT_NE(registry.Find(a), nullptr);
}

} // namespace
} // namespace zetaudiopluginhostui
