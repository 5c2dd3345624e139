#include "module/CrashRecovery.h"

#include <gmock/gmock.h>
#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zettesting/ScopedFaults.h>

#include "testing/CrashRecoveryFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::TechnologyType;
using zetcore::filesupport::File;

TEST(InsertPluginName, PutsTheNameInPlaceOfEveryToken)
{
    struct Case
    {
        const char* message;
        const char* name;
        const char* result;
    };
    for (const Case& each :
         {Case{"It was '@PLUGINNAME'.", "Reverb", "It was 'Reverb'."},
          Case{"@PLUGINNAME and @PLUGINNAME", "A", "A and A"}, Case{"@PLUGINNAME@PLUGINNAME", "ab", "abab"},
          Case{"no token", "A", "no token"}, Case{"", "A", ""}, Case{"@PLUGINNAME", "", ""},
          Case{"@PLUGINNAM @pluginname @@PLUGINNAME", "A", "@PLUGINNAM @pluginname @A"},
          Case{"<@PLUGINNAME>", "x@PLUGINNAMEx", "<x@PLUGINNAMEx>"},
          Case{"@PLUGIN@PLUGINNAMENAME", "", "@PLUGINNAME"}, Case{"@PLUGINNAME", "@0 \\1 $&", "@0 \\1 $&"}})
        EXPECT_EQ(InsertPluginName(each.message, each.name), each.result) << each.message;
}

class CrashRecoveryTest : public CrashRecoveryFixture
{
  protected:
    static std::string Resource()
    {
        return zettesting::ReadAll(std::filesystem::path(ZET_RESOURCES_FOLDER) /
                                   "UnsupportedAudioPlugIns.xml");
    }
    bool IsBannedInTheFile(const PluginLocator& locator) const
    {
        BannedPluginManager loaded;
        loaded.LoadConfiguration(File(zettesting::ToWide(bannedList)));
        return loaded.IsBanned(locator);
    }
    std::vector<PluginLocator> BannedInTheFile() const
    {
        BannedPluginManager loaded;
        loaded.LoadConfiguration(File(zettesting::ToWide(bannedList)));
        return {loaded.BannedBegin(), loaded.BannedEnd()};
    }
    void SaveToRegistry(const PluginLocator& locator)
    {
        PluginModuleInfoManager saved;
        saved.AddModule(std::make_shared<PluginModuleInfo>(locator));
        saved.SaveConfiguration(File(zettesting::ToWide(configuration)), true);
    }
};

TEST_F(CrashRecoveryTest, AFirstStartShowsNothingAndWritesTheUnsupportedListByteForByte)
{
    EXPECT_THAT(Start(), IsEmpty());
    EXPECT_EQ(zettesting::ReadAll(unsupportedList), Resource());
    EXPECT_NE(Resource().find("\r\n\t<plugin"), std::string::npos);
    EXPECT_TRUE(banned.IsUnsupportedFile(L"mda Combo.dll")) << "it is loaded too";
}

TEST_F(CrashRecoveryTest, DeletingTheUnsupportedListMakesTheNextStartWriteItAgain)
{
    Start();
    std::filesystem::remove(unsupportedList);
    Start();
    EXPECT_EQ(zettesting::ReadAll(unsupportedList), Resource());
}

TEST_F(CrashRecoveryTest, AnEditedUnsupportedListThatLoadsIsNeverOverwritten)
{
    const std::string edited = "<pluginlist><plugin filename=\"mine.so\"/></pluginlist>";
    zettesting::WriteAll(unsupportedList, edited);
    Start();
    EXPECT_EQ(zettesting::ReadAll(unsupportedList), edited);
    EXPECT_TRUE(banned.IsUnsupportedFile(L"mine.so"));
    EXPECT_FALSE(banned.IsUnsupportedFile(L"mda Combo.dll"));
}

TEST_F(CrashRecoveryTest, ADamagedUnsupportedListIsWrittenAgainAndWhatItHeldIsKeptAside)
{
    zettesting::WriteAll(unsupportedList, "<pluginlist><plugin");
    EXPECT_THAT(Start(), IsEmpty());
    EXPECT_EQ(zettesting::ReadAll(unsupportedList), Resource());
    EXPECT_EQ(zettesting::ReadAll(std::filesystem::path(unsupportedList).concat(".damaged")),
              "<pluginlist><plugin");
    EXPECT_TRUE(banned.IsUnsupportedFile(L"mda Combo.dll"));
}

TEST_F(CrashRecoveryTest, WithoutTheResourceAnEmptyUnsupportedListIsWritten)
{
    Terminate();
    CrashRecovery(nullptr, nullptr).Run();
    EXPECT_THAT(shown.calls, IsEmpty());
    EXPECT_TRUE(std::filesystem::exists(unsupportedList));
    EXPECT_EQ(zettesting::ReadAll(unsupportedList), "");
    Initialize();
    Start();
    EXPECT_EQ(zettesting::ReadAll(unsupportedList), Resource());
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(unsupportedList).concat(".damaged")))
        << "there is nothing to keep of an empty file";
}

TEST_F(CrashRecoveryTest, AHostThatForgetsToInitializeIsToldSo)
{
    Terminate();
    try {
        Start();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const zetcore::utility::null_ptr_exception& error) {
        EXPECT_THAT(error.what(), ::testing::HasSubstr("CheckForCrashedPluginsAndNotifyUser: call "
                                                       "zetaudiopluginhostui::Initialize() first"));
    }
    EXPECT_FALSE(std::filesystem::exists(unsupportedList));
}

TEST_F(CrashRecoveryTest, TheBannedListAndTheRegistryAreLoaded)
{
    const PluginLocator other{TechnologyType::VST, L"/plugins/other.so"};
    SaveToRegistry(other);
    BannedPluginManager saved;
    saved.AddBannedPlugin(plugin, "a reason");
    saved.SaveConfiguration(File(zettesting::ToWide(bannedList)));
    EXPECT_THAT(Start(), IsEmpty());
    EXPECT_TRUE(banned.IsBanned(plugin));
    EXPECT_NE(registry.Find(other), nullptr);
}

TEST_F(CrashRecoveryTest, AMarkerThatNamesAPluginWhichTheRegistryDoesNotKnowBansItAndTellsTheUser)
{
    WriteMarker(plugin);
    EXPECT_THAT(Start(), ElementsAre(ScanErrorAlert("/plugins/Bad one.so")));
    EXPECT_TRUE(banned.IsBanned(plugin));
    EXPECT_TRUE(IsBannedInTheFile(plugin));
    EXPECT_NE(banned.GetBanInfo(plugin)->reason, "");
    EXPECT_FALSE(std::filesystem::exists(marker));
}

TEST_F(CrashRecoveryTest, ASecondStartFindsNoMarkerAndShowsNothing)
{
    WriteMarker(plugin);
    Start();
    EXPECT_THAT(Start(), IsEmpty());
    EXPECT_TRUE(banned.IsBanned(plugin));
}

TEST_F(CrashRecoveryTest, ABannedPluginOfTheRegistryIsNoLongerAmongTheWorkingOnes)
{
    const PluginLocator other{TechnologyType::VST, L"/plugins/other.so"};
    PluginModuleInfoManager saved;
    saved.AddModule(std::make_shared<PluginModuleInfo>(plugin));
    saved.AddModule(std::make_shared<PluginModuleInfo>(other));
    saved.SaveConfiguration(File(zettesting::ToWide(configuration)), true);
    WriteMarker(plugin);
    Start();
    std::vector<PluginLocator> working;
    for (auto info = registry.PluginInfoBegin(); info != registry.PluginInfoEnd(); ++info)
        working.push_back((*info)->GetLocator());
    EXPECT_THAT(working, ElementsAre(other));
}

TEST_F(CrashRecoveryTest, ThePluginIsBannedAndSavedBeforeTheUserIsToldAndTheMarkerGoesAfterwards)
{
    const PluginLocator other{TechnologyType::VST, L"/plugins/other.so"};
    SaveToRegistry(other);
    WriteMarker(plugin);
    int alerts = 0;
    shown.onAlert = [&] {
        ++alerts;
        EXPECT_TRUE(IsBannedInTheFile(plugin));
        EXPECT_TRUE(std::filesystem::exists(marker));
        EXPECT_EQ(registry.Find(other), nullptr) << "the registry is loaded last";
    };
    Start();
    EXPECT_EQ(alerts, 1);
    EXPECT_FALSE(std::filesystem::exists(marker));
    EXPECT_NE(registry.Find(other), nullptr);
}

TEST_F(CrashRecoveryTest, AnEmptyMarkerIsDeletedWithoutAnAlert)
{
    const PluginLocator other{TechnologyType::VST, L"/plugins/other.so"};
    SaveToRegistry(other);
    WriteMarker("");
    EXPECT_THAT(Start(), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(marker));
    EXPECT_EQ(banned.BannedBegin(), banned.BannedEnd());
    EXPECT_NE(registry.Find(other), nullptr) << "the registry is loaded all the same";
}

TEST_F(CrashRecoveryTest, AMarkerThatNamesNothingIsDeletedWithoutABanAndWithoutAnAlert)
{
    const PluginLocator other{TechnologyType::VST, L"/plugins/other.so"};
    SaveToRegistry(other);
    for (const std::string& text :
         {std::string("VST"), std::string("VST||"), std::string("Unknown|/a.so|"), std::string("\n"),
          std::string("VST|/a.so|\n"), std::string("\xEF\xBB\xBFVST|/a.so|"), std::string(3, '\0'),
          "VST|" + std::string(std::size_t{3} << 20, 'a')}) {
        WriteMarker(text);
        EXPECT_THAT(Start(), IsEmpty()) << text.substr(0, 40);
        EXPECT_FALSE(std::filesystem::exists(marker)) << text.substr(0, 40);
        EXPECT_EQ(banned.BannedBegin(), banned.BannedEnd()) << text.substr(0, 40);
        EXPECT_NE(registry.Find(other), nullptr) << "the registry is loaded all the same";
    }
}

TEST_F(CrashRecoveryTest, AMarkerThatIsTooLongIsNotTakenForThePluginThatItBeginsWith)
{
    const std::string longest = "VST|/" + std::string((std::size_t{1} << 20) - 6, 'a') + "|";
    WriteMarker(longest + "Sub");
    EXPECT_THAT(Start(), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(marker));
    EXPECT_EQ(banned.BannedBegin(), banned.BannedEnd());
    WriteMarker(longest);
    EXPECT_EQ(Start().size(), 1u) << "this one is just short enough";
}

TEST_F(CrashRecoveryTest, EveryLocatorThatAScanCanMarkComesBackExactly)
{
    for (const PluginLocator& each :
         {PluginLocator{TechnologyType::VST3, L"/a b/\x00E4\x00F6\x4E2D.vst3"},
          PluginLocator{TechnologyType::VST, L"/a|b%\n.so", L"Sub | component"},
          PluginLocator{TechnologyType::VST, L"/" + std::wstring(3000, L'x') + L"/long.so"},
          PluginLocator{TechnologyType::VST, std::wstring(L"/stray") + static_cast<wchar_t>(0xDCFF)}}) {
        std::filesystem::remove(bannedList);
        WriteMarker(each);
        EXPECT_EQ(Start().size(), 1u);
        // The ban is of exactly this locator. A ban of the whole module would cover its sub-components too.
        const std::string text = zetcore::string::UTF16to8(each.ToString());
        EXPECT_THAT(std::vector<PluginLocator>(banned.BannedBegin(), banned.BannedEnd()), ElementsAre(each))
            << text;
        EXPECT_THAT(BannedInTheFile(), ElementsAre(each)) << text;
    }
}

TEST_F(CrashRecoveryTest, TheAlertBelongsToTheHostsWindowAndShowsTheDisplayString)
{
    WriteMarker(PluginLocator{TechnologyType::VST, L"/two\nlines.so"});
    const HWND parent = reinterpret_cast<HWND>(std::uintptr_t{0x123450});
    EXPECT_THAT(Start(parent), ElementsAre(ScanErrorAlert("/two lines.so")));
    EXPECT_THAT(shown.parents, ElementsAre(parent));
}

TEST_F(CrashRecoveryTest, TheBanIsOfTheBuildThatIsThere)
{
    const std::filesystem::path file = folder / "crashing.so";
    zettesting::WriteAll(file, "a build");
    const PluginLocator crashed{TechnologyType::VST, zettesting::ToWide(file)};
    WriteMarker(crashed);
    Start();
    EXPECT_TRUE(banned.IsBanned(crashed));
    EXPECT_EQ(banned.GetBanInfo(crashed)->stamp, zetaudiofilterhost::GetModuleFileStamp(crashed));
    EXPECT_FALSE(banned.IsDueAgain(crashed));
    zettesting::WriteAll(file, "another build");
    Start();
    EXPECT_TRUE(banned.IsBanned(crashed));
    EXPECT_TRUE(banned.IsDueAgain(crashed)) << "the next scan tries it again";
}

TEST_F(CrashRecoveryTest, ASubComponentAloneIsBannedAndItsSiblingsGoOnWorking)
{
    const PluginLocator crashed{TechnologyType::VST, L"/plugins/shell.so", L"1"};
    const PluginLocator sibling{TechnologyType::VST, L"/plugins/shell.so", L"2"};
    SaveToRegistry(sibling);
    WriteMarker(crashed);
    Start();
    EXPECT_TRUE(banned.IsBanned(crashed));
    EXPECT_FALSE(banned.IsBanned(sibling));
    ASSERT_NE(registry.PluginInfoBegin(), registry.PluginInfoEnd());
    EXPECT_EQ((*registry.PluginInfoBegin())->GetLocator(), sibling);
}

TEST_F(CrashRecoveryTest, TheMessageComesFromTheStringTableWithTheNameInEveryPlace)
{
    zetcore::config::Localizer::Get().LoadTableFromText(
        "\"$$$/AudioPluginManager/PluginScanError\"=\"@PLUGINNAME! @PLUGINNAME!\"\n", "test");
    WriteMarker(PluginLocator{TechnologyType::VST, L"/x@PLUGINNAME.so"});
    const auto alerts = Start();
    zetcore::config::Localizer::Get().Reset();
    EXPECT_THAT(alerts,
                ElementsAre("caution " + zetcore::string::UTF16to8(zetcore::utility::GetClientName()) +
                            ": /x@PLUGINNAME.so! /x@PLUGINNAME.so!"));
}

TEST_F(CrashRecoveryTest, APreferencesFolderThatCannotBeWrittenIsToldOnce)
{
    zettesting::WriteAll(folder / "file", "");
    zetcore::filesupport::Dir::SetPrefDir(zettesting::ToWide(folder / "file" / "prefs"));
    EXPECT_THAT(Start(), ElementsAre(AccessAlert()));
}

TEST_F(CrashRecoveryTest, AMarkerThatCannotBeDeletedIsToldAndTheRegistryIsLoadedAllTheSame)
{
    const PluginLocator other{TechnologyType::VST, L"/plugins/other.so"};
    SaveToRegistry(other);
    WriteMarker(plugin);
    const zettesting::ScopedFaults faults("delete." + marker.filename().string() + ":1:denied");
    EXPECT_THAT(Start(), ElementsAre(ScanErrorAlert("/plugins/Bad one.so"), AccessAlert()));
    EXPECT_TRUE(std::filesystem::exists(marker));
    EXPECT_NE(registry.Find(other), nullptr);
}

TEST_F(CrashRecoveryTest, WhatAPresentationThrowsPassesToTheHostAndTheNextStartTellsAgain)
{
    const PluginLocator other{TechnologyType::VST, L"/plugins/other.so"};
    SaveToRegistry(other);
    WriteMarker(plugin);
    shown.onAlert = [] { throw std::logic_error("the host's own trouble"); };
    EXPECT_THROW(Start(), std::logic_error);
    EXPECT_TRUE(std::filesystem::exists(marker)) << "nobody has read the alert";
    shown.onAlert = {};
    EXPECT_THAT(Start(), ElementsAre(ScanErrorAlert("/plugins/Bad one.so")));
    EXPECT_FALSE(std::filesystem::exists(marker));
    EXPECT_TRUE(banned.IsBanned(plugin));
    EXPECT_NE(registry.Find(other), nullptr);
}

TEST_F(CrashRecoveryTest, AFolderInPlaceOfTheRegistryIsTheHostsBusiness)
{
    std::filesystem::create_directory(configuration);
    EXPECT_THROW(Start(), zetcore::filesupport::file_exception);
}

} // namespace
} // namespace zetaudiopluginhostui
