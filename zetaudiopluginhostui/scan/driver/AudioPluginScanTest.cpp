// The scan in the host's own process.
#include <zetaudiopluginhostui/AudioPluginScan.h>

#include <zetcore/debug/DebugDatabase.h>

#include "testing/AudioPluginScanFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::TechnologyType;
using zetui::dialogs::UI_DialogViewContainer;

class AudioPluginScanTest : public AudioPluginScanFixture
{
  protected:
    static void ShowANoteForEachPlugin()
    {
        zetcore::debug::DebugDatabase::Instance().SetEntry("DebugPluginLoading", "true");
    }
    std::vector<std::wstring> SavedVstFolders() const
    {
        zetaudiofilterhost::PluginModuleInfoManager loaded;
        loaded.LoadConfiguration(zetcore::filesupport::File(zettesting::ToWide(Saved())));
        const auto vst = loaded.GetPluginTechnology(TechnologyType::VST);
        return {vst->DirectoryBegin(), vst->DirectoryEnd()};
    }
};

/// A folder as the registry gives it back, with the system's own separators.
std::wstring NativeFolder(const std::wstring& path)
{
    return std::filesystem::path(path).make_preferred().wstring();
}

/// Makes a folder the current one while it lives.
class CurrentFolder
{
  public:
    explicit CurrentFolder(const std::filesystem::path& folder) { std::filesystem::current_path(folder); }
    ~CurrentFolder() { std::filesystem::current_path(before); }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

  private:
    const std::filesystem::path before = std::filesystem::current_path();
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

TEST_F(AudioPluginScanTest, RelativePathsBecomeAbsolute)
{
    const auto absolute = MakeFile("a.so");
    // On Windows no relative path leads to another drive, and the temporary folder may lie on one.
    const CurrentFolder current(folder.Path());
    const std::filesystem::path relative = std::filesystem::path("plugins") / "a.so";
    Scan({PluginLocator(TechnologyType::VST, zettesting::ToWide(relative), L"One")});
    ASSERT_EQ(AudioPluginScan::GetLastPlugins().size(), 1u);
    const PluginLocator scanned = AudioPluginScan::GetLastPlugins().front();
    EXPECT_TRUE(std::filesystem::path(scanned.GetPath()).is_absolute()) << Path(scanned);
    EXPECT_TRUE(std::filesystem::equivalent(scanned.GetPath(), folder / "plugins" / "a.so"));
    EXPECT_EQ(scanned.GetTechnologyType(), TechnologyType::VST);
    EXPECT_EQ(scanned.GetSubcomponent(), L"One");
    EXPECT_FALSE(IsKnown(absolute)) << "what was asked for was a part of it";
    Scan({PluginLocator(TechnologyType::VST, zettesting::ToWide(relative))});
    EXPECT_TRUE(IsKnown(AudioPluginScan::GetLastPlugins().front()));
}

TEST_F(AudioPluginScanTest, ReportsEachPluginBeforeItIsScannedAndKeepsWhatWasFound)
{
    const auto a = MakeFile("a.so");
    const auto b = MakeFile("b.so");
    std::vector<bool> known;
    shown.onStep = [&] {
        known.push_back(IsKnown(a));
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

TEST_F(AudioPluginScanTest, ASubcomponentIsShownRightBehindItsModule)
{
    const PluginLocator part(TechnologyType::VST, MakeFile("shell.so").GetPath(), L"H\x00E4ll");
    Scan({part});
    EXPECT_THAT(shown.Starting("step"), ElementsAre("step " + Path(part) + " (H\xC3\xA4ll) (0/1)"));
}

TEST_F(AudioPluginScanTest, TheDialogTheNotesAndTheCautionsBelongToTheHostsWindow)
{
    // No such window is needed, because the recording presentation only notes the parent.
    const auto window = reinterpret_cast<HWND>(std::uintptr_t{0x1234});
    ShowANoteForEachPlugin();
    MakePrefsUnwritable();
    scan->ScanForPlugins(window, {MakeFile("a.so")}, false, true, false);
    // These are the dialog, the note, the plug-in's caution and the caution at the end.
    EXPECT_THAT(shown.parents, SizeIs(4));
    EXPECT_THAT(shown.parents, Each(window));
}

TEST_F(AudioPluginScanTest, TheMarkerNamesThePluginThatIsAboutToBeLoaded)
{
    const auto a = MakeFile("gr\xc3\xbc\xc3\x9f & 100%.so");
    const auto b = MakeFile("b.so");
    std::vector<std::string> markers;
    shown.onStep = [&] {
        markers.push_back(MarkerText());
        return false;
    };
    Scan({a, b});
    EXPECT_THAT(markers, ElementsAre(MarkerOf(a), MarkerOf(b)));
}

TEST_F(AudioPluginScanTest, AfterANormalScanNoMarkerRemains)
{
    Scan({MakeFile("a.so"), MakeFile("b.so")});
    EXPECT_FALSE(std::filesystem::exists(Marker()));
}

TEST_F(AudioPluginScanTest, WhatTheHostChangesDuringTheScanIsSavedBeforeEachPlugin)
{
    int steps = 0;
    std::vector<std::vector<std::wstring>> saved;
    shown.onStep = [&] {
        saved.push_back(SavedVstFolders());
        const std::wstring folderOfStep = NativeFolder(L"/step " + std::to_wstring(++steps));
        registry.GetPluginTechnology(TechnologyType::VST)->SetPluginDirectories({folderOfStep});
        return false;
    };
    registry.GetPluginTechnology(TechnologyType::VST)->SetPluginDirectories({NativeFolder(L"/before")});
    registry.SaveConfiguration(zetcore::filesupport::File(zettesting::ToWide(Saved())), true);
    Scan({MakeFile("a.so"), MakeFile("b.so"), MakeFile("c.so")});
    using Folders = std::vector<std::wstring>;
    EXPECT_THAT(saved, ElementsAre(Folders{NativeFolder(L"/before")}, Folders{NativeFolder(L"/step 1")},
                                   Folders{NativeFolder(L"/step 2")}));
    EXPECT_EQ(SavedVstFolders(), Folders{NativeFolder(L"/step 3")});
}

TEST_F(AudioPluginScanTest, ThePluginsToScanLeaveTheRegistryFirst)
{
    const auto a = MakeKnownFile("a.so");
    bool known = true;
    shown.onStep = [&] {
        known = IsKnown(a);
        return false;
    };
    Scan({a});
    EXPECT_FALSE(known);
}

TEST_F(AudioPluginScanTest, TheNoteComesAfterTheMarkerAndTheProgressAndBeforeTheSaveAndTheLoad)
{
    const auto a = MakeFile("a.so");
    const auto b = MakeFile("b.so");
    ShowANoteForEachPlugin();
    shown.onStep = [&] {
        registry.GetPluginTechnology(TechnologyType::VST)
            ->SetPluginDirectories({L"/changed " + std::to_wstring(shown.calls.size())});
        return false;
    };
    std::vector<std::string> markers;
    std::vector<bool> saved;
    std::vector<bool> known;
    shown.onAlert = [&] {
        markers.push_back(MarkerText());
        known.push_back(IsKnown(known.empty() ? a : b));
        const auto vst = registry.GetPluginTechnology(TechnologyType::VST);
        saved.push_back(SavedVstFolders() ==
                        std::vector<std::wstring>(vst->DirectoryBegin(), vst->DirectoryEnd()));
    };
    Scan({a, b});
    EXPECT_THAT(shown.calls, ElementsAre("show Scanning Audio Plug-Ins", "step " + Path(a) + " (0/2)",
                                         "note Scanning: " + Path(a), "step " + Path(b) + " (1/2)",
                                         "note Scanning: " + Path(b), "hide"));
    EXPECT_THAT(markers, ElementsAre(MarkerOf(a), MarkerOf(b)));
    EXPECT_THAT(saved, ElementsAre(false, false));
    EXPECT_THAT(known, ElementsAre(false, false));
}

TEST_F(AudioPluginScanTest, DebugPluginLoadingIsOnOnlyWhenItIsExactlyTrue)
{
    for (const char* value : {"True", "1", "true ", "false"}) {
        zetcore::debug::DebugDatabase::Instance().SetEntry("DebugPluginLoading", value);
        Scan({MakeFile("a.so")});
        EXPECT_THAT(shown.Starting("note"), IsEmpty()) << value;
    }
}

TEST_F(AudioPluginScanTest, CancelStopsBeforeTheNextPluginIsLoadedAndKeepsWhatWasFound)
{
    const auto a = MakeFile("a.so");
    const auto b = MakeKnownFile("b.so");
    const auto c = MakeKnownFile("c.so");
    int steps = 0;
    shown.onStep = [&] { return ++steps == 2; };
    Scan({a, b, c});
    EXPECT_EQ(steps, 2);
    EXPECT_TRUE(IsSaved(a));
    // A host puts back what was taken out when it is told of the scan's end. This test has no host.
    for (const auto& unreached : {b, c}) {
        EXPECT_FALSE(IsKnown(unreached));
        EXPECT_FALSE(IsSaved(unreached));
    }
    EXPECT_FALSE(std::filesystem::exists(Marker()));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(registry.PutBackUnreached(), (std::vector<PluginLocator>{b, c}));
}

TEST_F(AudioPluginScanTest, ACancelledScanIsSavedAtItsEnd)
{
    const auto a = MakeFile("a.so");
    shown.onStep = [] { return true; };
    shown.onHide = [&] {
        registry.GetPluginTechnology(TechnologyType::VST)->SetPluginDirectories({NativeFolder(L"/last")});
    };
    Scan({a});
    EXPECT_EQ(scan->GetEnd().how, ScanEnd::How::Cancelled);
    EXPECT_EQ(SavedVstFolders(), std::vector<std::wstring>{NativeFolder(L"/last")});
}

TEST_F(AudioPluginScanTest, ACancelledScanDoesNotCancelTheNext)
{
    const auto a = MakeFile("a.so");
    shown.onStep = [] { return true; };
    Scan({a});
    EXPECT_FALSE(IsKnown(a));
    shown.onStep = {};
    Scan({a});
    EXPECT_TRUE(IsKnown(a));
}

TEST_F(AudioPluginScanTest, OnlyTheCancelResponseCancels)
{
    for (const UI_DialogViewContainer::Response response : {1, 2, -1}) {
        EXPECT_FALSE(AudioPluginScanAccess::Close(*scan, response));
        EXPECT_FALSE(AudioPluginScanAccess::IsCancelled(*scan)) << response;
    }
    EXPECT_FALSE(AudioPluginScanAccess::Close(*scan, 0));
    EXPECT_TRUE(AudioPluginScanAccess::IsCancelled(*scan));
    EXPECT_FALSE(AudioPluginScanAccess::Report(*scan, MakeFile("a.so"), nullptr));
    EXPECT_FALSE(AudioPluginScanAccess::Close(*scan, 1));
    EXPECT_FALSE(AudioPluginScanAccess::IsCancelled(*scan));
    EXPECT_TRUE(AudioPluginScanAccess::Report(*scan, MakeFile("a.so"), nullptr));
}

TEST_F(AudioPluginScanTest, TheEndComesInOrderTheDialogTheMarkerTheSaveTheSignalTheCaution)
{
    const auto a = MakeFile("a.so");
    std::vector<std::string> atSignalShown;
    bool markerAtHide = false;
    bool markerAtSignal = true;
    bool savedAtHide = true;
    bool savedAtSignal = false;
    shown.onHide = [&] {
        markerAtHide = std::filesystem::exists(Marker());
        savedAtHide = SavedVstFolders() == std::vector<std::wstring>{NativeFolder(L"/last")};
    };
    onSignal = [&] {
        atSignalShown = shown.calls;
        markerAtSignal = std::filesystem::exists(Marker());
        savedAtSignal = IsSaved(a) && SavedVstFolders() == std::vector<std::wstring>{NativeFolder(L"/last")};
    };
    shown.onStep = [&] {
        MakePrefsUnwritable();
        return false;
    };
    // The last save of the loop has failed, so only the save at the end can save this.
    shown.onAlert = [&] {
        registry.GetPluginTechnology(TechnologyType::VST)->SetPluginDirectories({NativeFolder(L"/last")});
        MakePrefsWritable();
    };
    Scan({a});
    EXPECT_THAT(shown.calls,
                ElementsAre("show Scanning Audio Plug-Ins", "step " + Path(a) + " (0/1)", Caution(), "hide"));
    EXPECT_TRUE(markerAtHide);
    EXPECT_FALSE(savedAtHide);
    EXPECT_EQ(atSignalShown, shown.calls);
    EXPECT_FALSE(markerAtSignal);
    EXPECT_TRUE(savedAtSignal);
}

TEST_F(AudioPluginScanTest, APreferencesFolderThatCannotBeWrittenIsReportedForEachPluginAndOnceAtTheEnd)
{
    const auto a = MakeFile("a.so");
    const auto b = MakeFile("b.so");
    MakePrefsUnwritable();
    onSignal = [&] { shown.calls.emplace_back("signal"); };
    Scan({a, b});
    EXPECT_THAT(shown.calls,
                ElementsAre("show Scanning Audio Plug-Ins", "step " + Path(a) + " (0/2)", Caution(),
                            "step " + Path(b) + " (1/2)", Caution(), "hide", "signal", Caution()));
    EXPECT_TRUE(IsKnown(b));
}

TEST_F(AudioPluginScanTest, ASaveOfTheLoopThatFailedIsNotReportedAgainAtTheEnd)
{
    shown.onStep = [&] {
        MakePrefsUnwritable();
        return false;
    };
    shown.onAlert = [&] { MakePrefsWritable(); };
    Scan({MakeFile("a.so"), MakeFile("b.so")});
    EXPECT_THAT(shown.Starting("caution"), SizeIs(2));
}

TEST_F(AudioPluginScanTest, ASaveThatFailsOnlyAtTheEndIsReportedAfterTheSignal)
{
    shown.onHide = [&] { MakePrefsUnwritable(); };
    onSignal = [&] { shown.calls.emplace_back("signal"); };
    const auto a = MakeFile("a.so");
    Scan({a});
    EXPECT_THAT(shown.calls, ElementsAre("show Scanning Audio Plug-Ins", "step " + Path(a) + " (0/1)", "hide",
                                         "signal", Caution()));
}

TEST_F(AudioPluginScanTest, AScanWithinAnOperationLeavesItToThatToTellThatTheFolderCannotBeWritten)
{
    const auto scanWithin = [this](const PluginLocator& plugin) {
        Preferences operation(nullptr, nullptr);
        scan->ScanForPluginsWithin(operation, nullptr, {plugin}, false, true, false);
        return !operation.HasFailed();
    };
    EXPECT_TRUE(scanWithin(MakeFile("a.so")));
    shown.onStep = [&] {
        MakePrefsUnwritable();
        return false;
    };
    shown.onHide = [&] { MakePrefsWritable(); };
    EXPECT_FALSE(scanWithin(MakeFile("a.so")));
    shown.onStep = {};
    EXPECT_TRUE(scanWithin(MakeFile("a.so")));
    shown.onHide = [&] { MakePrefsUnwritable(); };
    EXPECT_FALSE(scanWithin(MakeFile("a.so")));
    EXPECT_THAT(shown.Starting("caution"), IsEmpty());
    // The next scan, which is part of nothing, tells the user itself.
    Scan({});
    EXPECT_THAT(shown.Starting("caution"), ElementsAre(Caution()));
}

} // namespace
} // namespace zetaudiopluginhostui
