// Two programs with one registry file.
#include <gmock/gmock.h>

#include "testing/RegistryFixture.h"
#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/sharing/FileLock.h>

namespace zetaudiofilterhost {

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;
using Names = std::vector<std::wstring>;

class RegistryMergeTest : public RegistryFixture
{
  protected:
    RegistryMergeTest()
    {
        Add(registry, L"a");
        Add(registry, L"b");
        Save(registry);
        Load(other);
    }
    static void Add(PluginModuleInfoManager& manager, const std::wstring& name,
                    const std::wstring& shown = {})
    {
        manager.AddModule(MakeInfo(Vst(L"/" + name + L".so"), shown.empty() ? name : shown));
    }
    void Save(PluginModuleInfoManager& manager) { manager.SaveConfiguration(file, true); }
    void Load(PluginModuleInfoManager& manager) { EXPECT_TRUE(manager.LoadConfiguration(file)); }
    Names Saved()
    {
        PluginModuleInfoManager third;
        Load(third);
        return Shown(third);
    }

    PluginModuleInfoManager other;
};

TEST_F(RegistryMergeTest, TheSecondSaveKeepsWhatTheFirstOneFound)
{
    Add(registry, L"c");
    Save(registry);
    Add(other, L"d");
    Save(other);
    EXPECT_THAT(Saved(), ElementsAre(L"a", L"b", L"c", L"d"));
    EXPECT_THAT(Shown(other), ElementsAre(L"a", L"b", L"c", L"d"));
    Save(registry);
    EXPECT_THAT(Saved(), ElementsAre(L"a", L"b", L"c", L"d"));
}

TEST_F(RegistryMergeTest, WhatIsOnlyInTheOthersJournalIsKeptToo)
{
    registry.BeginIncrementalSaves();
    Save(registry);
    Add(registry, L"c");
    Save(registry);
    ASSERT_TRUE(std::filesystem::exists(journal));
    Add(other, L"d");
    Save(other);
    EXPECT_THAT(Saved(), ElementsAre(L"a", L"b", L"c", L"d"));
    Add(registry, L"e");
    Save(registry);
    EXPECT_THAT(Saved(), ElementsAre(L"a", L"b", L"c", L"d", L"e"));
}

TEST_F(RegistryMergeTest, TwoThatSaveIncrementallyLoseNothing)
{
    registry.BeginIncrementalSaves();
    other.BeginIncrementalSaves();
    Names expected{L"a", L"b"};
    for (int step = 0; step < 10; ++step) {
        const std::wstring number = std::to_wstring(step);
        Add(registry, L"r" + number);
        Save(registry);
        Add(other, L"o" + number);
        Save(other);
        expected.insert(expected.end(), {L"r" + number, L"o" + number});
        EXPECT_THAT(Saved(), ::testing::UnorderedElementsAreArray(expected));
    }
}

TEST_F(RegistryMergeTest, OwnChangesGoBeforeTheOthers)
{
    Add(registry, L"a", L"theirs");
    Save(registry);
    Add(other, L"a", L"ours");
    Save(other);
    EXPECT_THAT(Saved(), ElementsAre(L"ours", L"b"));
}

TEST_F(RegistryMergeTest, AChoiceThatTheOtherMadeIsNotUndone)
{
    Held(registry, Vst(L"/a.so")).SetEnabled(false);
    Save(registry);
    Add(other, L"c");
    Save(other);
    EXPECT_FALSE(Held(other, Vst(L"/a.so")).IsEnabled());
    Held(other, Vst(L"/a.so")).SetEnabled(true);
    Save(other);
    Load(registry);
    EXPECT_TRUE(Held(registry, Vst(L"/a.so")).IsEnabled());
}

TEST_F(RegistryMergeTest, WhatThisOneRemovedStaysRemoved)
{
    Add(registry, L"c");
    Save(registry);
    other.RemovePluginLocators({Vst(L"/a.so")});
    Save(other);
    EXPECT_THAT(Saved(), ElementsAre(L"b", L"c"));
}

TEST_F(RegistryMergeTest, FoldersThatOnlyTheOtherChangedAreTheOthers)
{
    registry.GetPluginTechnology(TechnologyType::VST)->SetPluginDirectories({L"/theirs"});
    Save(registry);
    Save(other);
    EXPECT_THAT(FoldersOf(other, TechnologyType::VST), ElementsAre(zettesting::ToWide("/theirs")));
}

TEST_F(RegistryMergeTest, FoldersThatBothChangedAreAdded)
{
    registry.GetPluginTechnology(TechnologyType::VST)->AddPluginDirectories({L"/theirs"});
    Save(registry);
    other.GetPluginTechnology(TechnologyType::VST)->AddPluginDirectories({L"/ours"});
    Save(other);
    Load(registry);
    EXPECT_THAT(FoldersOf(registry, TechnologyType::VST), Contains(zettesting::ToWide("/ours")));
    EXPECT_THAT(FoldersOf(registry, TechnologyType::VST), Contains(zettesting::ToWide("/theirs")));
}

TEST_F(RegistryMergeTest, AFileThatTheOtherDamagedIsKeptAside)
{
    zettesting::WriteAll(path, "no registry");
    Add(other, L"c");
    Save(other);
    EXPECT_THAT(Saved(), ElementsAre(L"a", L"b", L"c"));
    EXPECT_EQ(zettesting::ReadAll(path.string() + ".damaged"), "no registry");
}

TEST_F(RegistryMergeTest, WithoutAnybodyElseASaveReadsNothingIn)
{
    Add(other, L"c");
    Save(other);
    other.RemovePluginLocators({Vst(L"/c.so")});
    Save(other);
    EXPECT_THAT(Saved(), ElementsAre(L"a", L"b"));
    EXPECT_FALSE(HasTraced("taken in"));
}

TEST_F(RegistryMergeTest, ASaveThatCannotHaveTheLockIsMadeAllTheSame)
{
    const zetcore::filesupport::FileLock held(file);
    Add(other, L"c");
    Save(other);
    EXPECT_THAT(Saved(), Contains(L"c"));
    EXPECT_TRUE(HasTraced("lock"));
}

TEST_F(RegistryMergeTest, WhatAScanFoundIsKeptAtOnce)
{
    other.RemovePluginLocators({Vst(L"/a.so"), Vst(L"/b.so")});
    Save(other);
    for (const wchar_t* name : {L"a", L"c"})
        other.AddConfiguration(PluginModuleInfoManager::ToConfigurationText(
                                   {MakeInfo(Vst(L"/" + std::wstring(name) + L".so"), name)}),
                               false);
    EXPECT_THAT(Saved(), ElementsAre(L"a", L"c"));
    Save(other);
    EXPECT_FALSE(std::filesystem::exists(journal));
    EXPECT_THAT(Saved(), ElementsAre(L"a", L"c"));
}

TEST_F(RegistryMergeTest, WhatAScanFoundIsNotForcedIntoAFileThatAnotherHasSaved)
{
    Save(other);
    Add(registry, L"theirs");
    Save(registry);
    other.AddConfiguration(PluginModuleInfoManager::ToConfigurationText({MakeInfo(Vst(L"/c.so"), L"c")}),
                           false);
    EXPECT_THAT(Saved(), Not(Contains(L"c")));
    Save(other);
    EXPECT_THAT(Saved(), ElementsAre(L"a", L"b", L"c", L"theirs"));
}

TEST_F(RegistryMergeTest, LoadingDeletesWhatKilledSavesHaveLeft)
{
    const auto left = prefs / ".zet-1a-2b.tmp", fresh = prefs / ".zet-3c-4d.tmp";
    for (const auto& name : {left, fresh})
        zettesting::WriteAll(name, "half");
    std::filesystem::last_write_time(left,
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(2));
    Load(other);
    EXPECT_FALSE(std::filesystem::exists(left));
    EXPECT_TRUE(std::filesystem::exists(fresh));
}

TEST_F(RegistryMergeTest, AChoiceOfTheOtherDoesNotOverrideOurs)
{
    // The choice for a plug-in that is not in the registry at the moment.
    const auto removeWith = [](PluginModuleInfoManager& manager, bool isEnabled) {
        Held(manager, Vst(L"/a.so")).SetEnabled(isEnabled);
        std::vector<PluginLocator> vanished;
        manager.CollectPotentialPlugins(true, vanished);
        manager.RemovePluginLocators(vanished);
    };
    const auto isEnabledAgain = [](PluginModuleInfoManager& manager) {
        Add(manager, L"a");
        return Held(manager, Vst(L"/a.so")).IsEnabled();
    };
    Held(registry, Vst(L"/a.so")).SetEnabled(false);
    Save(registry);
    Load(other);
    removeWith(registry, false);
    Save(registry);
    removeWith(other, true);
    Save(other);
    EXPECT_TRUE(isEnabledAgain(other));
}

TEST_F(RegistryMergeTest, AChoiceThatTheOtherRemembersIsTakenIn)
{
    registry.AddConfiguration("<audioplugins version=\"1.0\"><choice locator=\"VST|/z.so|\" "
                              "enabled=\"false\"/></audioplugins>",
                              true);
    Save(registry);
    Add(other, L"c");
    Save(other);
    Add(other, L"z");
    EXPECT_FALSE(Held(other, Vst(L"/z.so")).IsEnabled());
}

TEST_F(RegistryMergeTest, OwnJournalEntriesAreNotTakenForTheOthers)
{
    other.BeginIncrementalSaves();
    Save(other);
    Add(other, L"c");
    Save(other);
    ASSERT_TRUE(std::filesystem::exists(journal));
    other.EndIncrementalSaves();
    std::vector<PluginLocator> vanished;
    other.CollectPotentialPlugins(true, vanished);
    other.RemovePluginLocators({Vst(L"/c.so")});
    Save(other);
    EXPECT_FALSE(HasTraced("taken in"));
    EXPECT_THAT(Saved(), ElementsAre(L"a", L"b"));
}

TEST_F(RegistryMergeTest, FindingsThatAScanHasKeptAtOnceAreNotTakenForTheOthersEither)
{
    Save(other);
    other.AddConfiguration(PluginModuleInfoManager::ToConfigurationText({MakeInfo(Vst(L"/c.so"), L"c")}),
                           false);
    ASSERT_TRUE(std::filesystem::exists(journal));
    Save(other);
    EXPECT_FALSE(HasTraced("taken in"));
}

TEST_F(RegistryMergeTest, AChoiceOnARecordThatTheOtherBroughtIsInTheNextIncrementalSave)
{
    Add(registry, L"theirs");
    Save(registry);
    other.BeginIncrementalSaves();
    Add(other, L"ours");
    Save(other);
    ASSERT_NE(other.Find(Vst(L"/theirs.so")), nullptr);
    Held(other, Vst(L"/theirs.so")).SetEnabled(false);
    Save(other);
    ASSERT_TRUE(std::filesystem::exists(journal));
    Load(registry);
    EXPECT_FALSE(Held(registry, Vst(L"/theirs.so")).IsEnabled());
}

} // namespace

} // namespace zetaudiofilterhost
