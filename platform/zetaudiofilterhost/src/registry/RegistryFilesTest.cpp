#include <gmock/gmock.h>
#include <zettesting/TextOf.h>

#include "testing/RegistryFixture.h"
#include "text/ConfigurationJournal.h"
#include <zetcore/filesupport/paths/FileException.h>

namespace zetaudiofilterhost {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using zettesting::ReadAll;
using zettesting::WriteAll;

class RegistryFilesTest : public RegistryFixture
{
  protected:
    std::filesystem::path KeptAside() const { return prefs / "AudioPlugins.xml.damaged"; }

    PluginModuleInfoManager loaded;
};

TEST_F(RegistryFilesTest, TheFileIsCalledAudioPlugins)
{
    EXPECT_EQ(PluginModuleInfoManager::GetSettingsFileName(), L"AudioPlugins.xml");
}

TEST_F(RegistryFilesTest, AMissingFileGivesAnEmptyRegistryWithDefaultFolders)
{
    registry.AddModule(MakeInfo(Vst(L"/a.so")));
    EXPECT_TRUE(registry.LoadConfiguration(file));
    EXPECT_EQ(registry.RecordCount(), 0u);
    EXPECT_FALSE(FoldersOf(registry, TechnologyType::VST).empty());
    EXPECT_EQ(zettesting::TextOf(registry.GetLoadError()), "");
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(RegistryFilesTest, FoldersRecordsAndChoicesComeBack)
{
    registry.GetPluginTechnology(TechnologyType::VST)->SetPluginDirectories({L"/z", L"/a"});
    registry.GetPluginTechnology(TechnologyType::VST3)->SetPluginDirectories({});
    registry.AddModule(MakeInfo(Vst(L"/a.so"), L"A"));
    const auto disabled = MakeInfo(Vst(L"/b.so"), L"B");
    disabled->SetEnabled(false);
    registry.AddModule(disabled);
    const auto removed = MakeInfo(Vst(L"/c.so"), L"C");
    removed->SetEnabled(false);
    registry.AddModule(removed);
    registry.RemovePluginLocators({Vst(L"/c.so")});
    registry.SaveConfiguration(file, true);

    loaded.AddModule(MakeInfo(Vst(L"/other.so"), L"Other"));
    loaded.ResetToDefaultFolders();
    ASSERT_TRUE(loaded.LoadConfiguration(file));
    EXPECT_THAT(Shown(loaded), ElementsAre(L"A", L"B"));
    EXPECT_TRUE(loaded.Find(Vst(L"/a.so"))->IsEnabled());
    EXPECT_FALSE(loaded.Find(Vst(L"/b.so"))->IsEnabled());
    EXPECT_EQ(FoldersOf(loaded, TechnologyType::VST), FoldersOf(registry, TechnologyType::VST));
    EXPECT_EQ(FoldersOf(loaded, TechnologyType::VST).size(), 2u);
    EXPECT_THAT(FoldersOf(loaded, TechnologyType::VST3), IsEmpty());
    const auto back = MakeInfo(Vst(L"/c.so"), L"C");
    loaded.AddModule(back);
    EXPECT_FALSE(back->IsEnabled());
}

TEST_F(RegistryFilesTest, SavingWhatWasLoadedWritesTheSameBytes)
{
    registry.ResetToDefaultFolders();
    for (const wchar_t* name : {L"/c.so", L"/a.so", L"/b | \u00e9.so"})
        registry.AddModule(MakeInfo(Vst(name), name));
    registry.SaveConfiguration(file, true);
    const std::string first = ReadAll(path);
    ASSERT_TRUE(loaded.LoadConfiguration(file));
    loaded.SaveConfiguration(file, true);
    EXPECT_EQ(ReadAll(path), first);
    loaded.Find(Vst(L"/a.so"))->SetEnabled(false);
    loaded.SaveConfiguration(file, true);
    EXPECT_NE(ReadAll(path), first);
}

TEST_F(RegistryFilesTest, LoadingUndoesEverythingSinceTheSave)
{
    registry.GetPluginTechnology(TechnologyType::VST)->SetPluginDirectories({L"/plugins"});
    registry.AddModule(MakeInfo(Vst(L"/a.so"), L"A"));
    registry.AddModule(MakeInfo(Vst(L"/b.so"), L"B"));
    registry.SaveConfiguration(file, true);
    const auto folders = FoldersOf(registry, TechnologyType::VST);

    registry.Find(Vst(L"/a.so"))->SetEnabled(false);
    registry.RemovePluginLocators({Vst(L"/b.so")});
    registry.AddModule(MakeInfo(Vst(L"/c.so"), L"C"));
    registry.GetPluginTechnology(TechnologyType::VST)->AddPluginDirectories({L"/more"});
    registry.GetPluginTechnology(TechnologyType::AU)->AddPluginDirectories({L"/components"});
    ASSERT_TRUE(registry.LoadConfiguration(file));
    EXPECT_THAT(Shown(registry), ElementsAre(L"A", L"B"));
    EXPECT_TRUE(registry.Find(Vst(L"/a.so"))->IsEnabled());
    EXPECT_EQ(FoldersOf(registry, TechnologyType::VST), folders);
    EXPECT_THAT(FoldersOf(registry, TechnologyType::AU), IsEmpty());
}

TEST_F(RegistryFilesTest, FoldersChangedByLoadingAreTold)
{
    registry.GetPluginTechnology(TechnologyType::VST)->SetPluginDirectories({L"/plugins"});
    registry.SaveConfiguration(file, true);
    int told = 0;
    std::size_t recordsThen = 0;
    loaded.GetPluginTechnology(TechnologyType::VST)->GetDirectoriesChangedSignal().Connect([&](const auto&) {
        ++told;
        recordsThen = loaded.RecordCount();
    });
    ASSERT_TRUE(loaded.LoadConfiguration(file));
    EXPECT_EQ(told, 1);
    EXPECT_EQ(recordsThen, registry.RecordCount());
    ASSERT_TRUE(loaded.LoadConfiguration(file));
    EXPECT_EQ(told, 1);
}

TEST_F(RegistryFilesTest, TechnologiesThatTheFileDoesNotMentionHaveTheirDefaultFolders)
{
    WriteAll(path, "<audioplugins version=\"1.0\"><technology name=\"VST\"/></audioplugins>");
    ASSERT_TRUE(loaded.LoadConfiguration(file));
    EXPECT_THAT(FoldersOf(loaded, TechnologyType::VST), IsEmpty());
    EXPECT_FALSE(FoldersOf(loaded, TechnologyType::VST3).empty());
}

TEST_F(RegistryFilesTest, WithoutModulesOnlyFoldersAreSaved)
{
    registry.GetPluginTechnology(TechnologyType::VST)->SetPluginDirectories({L"/plugins"});
    registry.AddModule(MakeInfo(Vst(L"/a.so")));
    registry.SaveConfiguration(file, false);
    ASSERT_TRUE(loaded.LoadConfiguration(file));
    EXPECT_EQ(loaded.RecordCount(), 0u);
    EXPECT_EQ(FoldersOf(loaded, TechnologyType::VST), FoldersOf(registry, TechnologyType::VST));
}

TEST_F(RegistryFilesTest, ADamagedFileIsNamedKeptAsideAndLeavesAnEmptyRegistry)
{
    const std::string damaged =
        "<audioplugins version=\"1.0\">\n<module locator=\"VST|/a.so|\" size=\"big\"/>\n"
        "</audioplugins>\n";
    WriteAll(path, damaged);
    registry.AddModule(MakeInfo(Vst(L"/old.so")));
    EXPECT_FALSE(registry.LoadConfiguration(file));
    EXPECT_THAT(zettesting::TextOf(registry.GetLoadError()),
                HasSubstr("AudioPlugins.xml, line 2: element module, attribute size"));
    EXPECT_THAT(zettesting::TextOf(registry.GetLoadError()),
                testing::EndsWith("; kept as " + KeptAside().string()));
    EXPECT_TRUE(HasTraced(zettesting::TextOf(registry.GetLoadError())));
    EXPECT_EQ(registry.RecordCount(), 0u);
    EXPECT_FALSE(FoldersOf(registry, TechnologyType::VST).empty());
    EXPECT_EQ(ReadAll(KeptAside()), damaged);
    EXPECT_FALSE(std::filesystem::exists(path));

    registry.SaveConfiguration(file, true);
    EXPECT_EQ(ReadAll(KeptAside()), damaged);
    EXPECT_TRUE(registry.LoadConfiguration(file));
    EXPECT_EQ(zettesting::TextOf(registry.GetLoadError()), "");
}

TEST_F(RegistryFilesTest, AFileCutOffAnywhereIsDamaged)
{
    registry.AddModule(MakeInfo(Vst(L"/a.so"), L"A"));
    registry.GetPluginTechnology(TechnologyType::VST)->SetPluginDirectories({L"/plugins"});
    registry.SaveConfiguration(file, true);
    const std::string whole = ReadAll(path);
    // The last byte is the line end, which nothing depends on.
    for (std::size_t length = 0; length < whole.size() - 1; ++length) {
        WriteAll(path, whole.substr(0, length));
        EXPECT_FALSE(loaded.LoadConfiguration(file)) << length;
        EXPECT_EQ(loaded.RecordCount(), 0u);
    }
}

TEST_F(RegistryFilesTest, AFileThatCannotBeReadIsAnErrorAndChangesNothing)
{
    std::filesystem::create_directory(path);
    registry.AddModule(MakeInfo(Vst(L"/a.so")));
    EXPECT_THROW(registry.LoadConfiguration(file), zetcore::filesupport::file_exception);
    EXPECT_EQ(registry.RecordCount(), 1u);
}

TEST_F(RegistryFilesTest, AFileThatCannotBeWrittenIsAnError)
{
    const zetcore::filesupport::File nowhere(zettesting::ToWide(prefs / "missing" / "AudioPlugins.xml"));
    EXPECT_THROW(registry.SaveConfiguration(nowhere, true), zetcore::filesupport::file_exception);
}

TEST_F(RegistryFilesTest, UnknownPartsOfANewerVersionsFileSurviveLoadAndSave)
{
    WriteAll(path,
             "<audioplugins version=\"3.1\" theme=\"dark\">\n"
             "<technology name=\"VST\" order=\"date\"><folder path=\"/plugins\" depth=\"2\"/></technology>\n"
             "<module locator=\"VST|/a.so|\" name=\"A\" stars=\"5\"><tag/></module>\n"
             "<choice locator=\"VST|/b.so|\" enabled=\"false\" stars=\"4\"/>\n"
             "<layout/>\n</audioplugins>\n");
    ASSERT_TRUE(registry.LoadConfiguration(file));
    EXPECT_THAT(Shown(registry), ElementsAre(L"A"));
    registry.SaveConfiguration(file, true);
    const std::string saved = ReadAll(path);
    for (const std::string kept : {"version=\"3.1\"", "theme=\"dark\"", "order=\"date\"", "depth=\"2\"",
                                   "stars=\"5\"", "<tag", "stars=\"4\"", "<layout"})
        EXPECT_THAT(saved, HasSubstr(kept));
}

TEST_F(RegistryFilesTest, UnknownPartsOfARecordSurviveARescan)
{
    WriteAll(path, "<audioplugins version=\"1.0\">\n<module locator=\"VST|/a.so|\" stars=\"5\"/>\n"
                   "<module locator=\"VST|/b.so|\" stars=\"4\"/></audioplugins>\n");
    ASSERT_TRUE(registry.LoadConfiguration(file));
    registry.RemovePluginLocators({Vst(L"/a.so")});
    registry.SaveConfiguration(file, true);
    ASSERT_TRUE(loaded.LoadConfiguration(file));
    loaded.AddModule(MakeInfo(Vst(L"/a.so"), L"A"));
    loaded.AddModule(MakeInfo(Vst(L"/b.so"), L"B"));
    loaded.SaveConfiguration(file, true);
    EXPECT_THAT(ReadAll(path), HasSubstr("stars=\"5\""));
    EXPECT_THAT(ReadAll(path), HasSubstr("stars=\"4\""));
    EXPECT_TRUE(loaded.Find(Vst(L"/a.so"))->IsEnabled());
}

TEST_F(RegistryFilesTest, TheLastOfTwoRecordsForOnePluginHolds)
{
    WriteAll(path, "<audioplugins version=\"1.0\">\n<module locator=\"VST|/a.so|\" name=\"First\"/>\n"
                   "<module locator=\"VST|/a.so|\" name=\"Last\"/></audioplugins>\n");
    ASSERT_TRUE(registry.LoadConfiguration(file));
    EXPECT_THAT(Shown(registry), ElementsAre(L"Last"));
}

} // namespace

} // namespace zetaudiofilterhost
