// A ban is of one build of a file: when it is due, and when it ends.
#include <gmock/gmock.h>

#include "testing/RegistryFixture.h"

namespace zetaudiofilterhost {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zettesting::ToWide;
using zettesting::WriteAll;
using Locators = std::vector<PluginLocator>;
using InfoPtr = PluginModuleInfoManager::InfoPtr;

/// Uses VST3 modules, because the same files are then plug-ins on every platform.
class RegistryBansTest : public RegistryFixture
{
  protected:
    RegistryBansTest()
    {
        std::filesystem::create_directory(plugins);
        registry.GetPluginTechnology(TechnologyType::VST3)->SetPluginDirectories({ToWide(plugins)});
        registry.GetBansEndedSignal().Connect([this](const Locators& locators) {
            ended.insert(ended.end(), locators.begin(), locators.end());
        });
    }
    PluginLocator At(const std::string& name, const std::wstring& subcomponent = {}) const
    {
        return {TechnologyType::VST3, ToWide(plugins / name), subcomponent};
    }
    void Write(const std::string& name, const std::string& content = "plug-in")
    {
        WriteAll(plugins / name, content);
    }
    /// A ban of the build that is there now.
    static BannedModule BanOf(const PluginLocator& locator, bool triedByEveryScan = false)
    {
        return {locator, GetModuleFileStamp(locator), triedByEveryScan};
    }
    static InfoPtr ResultFor(const PluginLocator& locator, ModuleStatus status = ModuleStatus::Working)
    {
        const InfoPtr info = MakeInfo(locator);
        const ModuleFileStamp stamp = GetModuleFileStamp(locator);
        info->SetFileStamp(stamp.size, stamp.time);
        info->SetStatus(status);
        return info;
    }
    void Give(const std::vector<InfoPtr>& results)
    {
        registry.AddConfiguration(PluginModuleInfoManager::ToConfigurationText(results), false);
    }
    Locators Collect(bool newOnly = true) { return registry.CollectPotentialPlugins(newOnly, vanished); }

    const std::filesystem::path plugins = folder / "plugins";
    Locators vanished, ended;
};

TEST_F(RegistryBansTest, ABanIsDueWhenTheFileIsAnotherBuild)
{
    const ModuleFileStamp known{1, 2}, other{1, 3}, none;
    EXPECT_FALSE((BannedModule{{}, known}.IsDue(known)));
    EXPECT_TRUE((BannedModule{{}, known}.IsDue(other)));
    EXPECT_TRUE((BannedModule{{}, known}.IsDue({2, 2})));
    EXPECT_FALSE((BannedModule{{}, known}.IsDue(none))) << "a file that is not there is no other build";
    EXPECT_FALSE((BannedModule{{}, none}.IsDue(known))) << "a ban of every build";
    EXPECT_TRUE((BannedModule{{}, none, true}.IsDue(known)));
    EXPECT_TRUE((BannedModule{{}, known, true}.IsDue(known)));
}

TEST_F(RegistryBansTest, AScanForNewPluginsTriesABannedOneAgainWhenItsFileHasChanged)
{
    for (const char* name : {"any.vst3", "missing.vst3", "same.vst3", "updated.vst3"})
        Write(name);
    registry.SetBannedLocators({BannedModule{At("any.vst3")}, BanOf(At("missing.vst3"), true),
                                BanOf(At("same.vst3")), BanOf(At("updated.vst3"))});
    EXPECT_THAT(Collect(), ElementsAre(At("missing.vst3")));
    Write("any.vst3", "an update");
    Write("updated.vst3", "an update");
    EXPECT_THAT(Collect(), ElementsAre(At("missing.vst3"), At("updated.vst3")));
    EXPECT_THAT(Collect(false), ElementsAre(At("missing.vst3"), At("updated.vst3")));
    EXPECT_THAT(ended, IsEmpty()) << "looking for plug-ins ends no ban";
    EXPECT_THAT(vanished, IsEmpty());
}

TEST_F(RegistryBansTest, ABannedSubComponentBringsItsModuleWhenItIsDue)
{
    Write("shell.vst3");
    registry.SetBannedLocators({BanOf(At("shell.vst3", L"1"))});
    registry.AddModule(ResultFor(At("shell.vst3", L"2")));
    EXPECT_THAT(Collect(), IsEmpty());
    registry.SetBannedLocators({BanOf(At("shell.vst3", L"1"), true)});
    EXPECT_THAT(Collect(), ElementsAre(At("shell.vst3")));
    // A ban of the whole module that is not due goes before.
    registry.SetBannedLocators({BanOf(At("shell.vst3")), BanOf(At("shell.vst3", L"1"), true)});
    EXPECT_THAT(Collect(), IsEmpty());
}

TEST_F(RegistryBansTest, AResultOfAnotherBuildEndsTheBan)
{
    Write("a.vst3");
    registry.SetBannedLocators({BanOf(At("a.vst3")), BannedModule{At("b.vst3")}});
    Give({ResultFor(At("a.vst3"))});
    EXPECT_THAT(ended, IsEmpty()) << "the banned build";
    Write("a.vst3", "an update");
    Give({ResultFor(At("a.vst3"), ModuleStatus::Unscanned)});
    Give({ResultFor(At("a.vst3"), ModuleStatus::Unreadable)});
    EXPECT_THAT(ended, IsEmpty()) << "no result";
    Give({MakeInfo(At("a.vst3")), ResultFor(At("b.vst3"))});
    EXPECT_THAT(ended, IsEmpty()) << "of which build is not known";
    Give({ResultFor(At("a.vst3"), ModuleStatus::NotAPlugin)});
    EXPECT_THAT(ended, ElementsAre(At("a.vst3")));
}

TEST_F(RegistryBansTest, WhatAnInProcessScanFindsEndsTheBanAndWhatAHostAddsDoesNot)
{
    Write("a.vst3");
    registry.SetBannedLocators({BanOf(At("a.vst3"))});
    Write("a.vst3", "an update");
    registry.AddModule(ResultFor(At("a.vst3")));
    EXPECT_THAT(ended, IsEmpty());
    registry.BeginIncrementalSaves();
    registry.AddModule(ResultFor(At("a.vst3")));
    EXPECT_THAT(ended, ElementsAre(At("a.vst3")));
}

TEST_F(RegistryBansTest, ABanThatEveryScanTriesEndsWithAnyResult)
{
    Write("a.vst3");
    registry.SetBannedLocators({BanOf(At("a.vst3"), true)});
    Give({ResultFor(At("a.vst3"), ModuleStatus::Unreadable)});
    EXPECT_THAT(ended, IsEmpty());
    Give({ResultFor(At("a.vst3"))});
    EXPECT_THAT(ended, ElementsAre(At("a.vst3")));
}

TEST_F(RegistryBansTest, TheResultIsThereWhenTheEndIsTold)
{
    const PluginLocator given = At("given.vst3"), found = At("found.vst3");
    for (const char* name : {"given.vst3", "found.vst3"})
        Write(name);
    registry.SetBannedLocators({BanOf(given, true), BanOf(found, true)});
    std::vector<Locators> thereWhenTold;
    registry.GetBansEndedSignal().Connect([&](const Locators& locators) {
        Locators there;
        for (const PluginLocator& locator : locators)
            if (registry.Find(locator))
                there.push_back(locator);
        thereWhenTold.push_back(there);
    });
    Give({ResultFor(given)});
    EXPECT_THAT(thereWhenTold, ElementsAre(ElementsAre(given)));
    registry.BeginIncrementalSaves();
    registry.AddModule(ResultFor(found));
    EXPECT_THAT(thereWhenTold, ElementsAre(ElementsAre(given), ElementsAre(found)));
}

TEST_F(RegistryBansTest, AModulesResultSpeaksForItsSubComponentsAndOneScannedAloneDoesNot)
{
    Write("shell.vst3");
    const PluginLocator one = At("shell.vst3", L"1"), two = At("shell.vst3", L"2");
    registry.SetBannedLocators({BanOf(one), BanOf(two)});
    Write("shell.vst3", "an update");
    const InfoPtr alone = ResultFor(two);
    alone->SetScannedAlone(true);
    Give({alone});
    EXPECT_THAT(ended, ElementsAre(two));
    ended.clear();
    Give({ResultFor(At("shell.vst3", L"3"))});
    EXPECT_THAT(ended, ElementsAre(one, two)) << "the new build may have neither";
    ended.clear();
    registry.SetBannedLocators({BanOf(At("shell.vst3"))});
    Write("shell.vst3", "another update");
    const InfoPtr again = ResultFor(two);
    again->SetScannedAlone(true);
    Give({again});
    EXPECT_THAT(ended, ElementsAre(At("shell.vst3")));
}

TEST_F(RegistryBansTest, ABannedPluginWhoseFileIsGoneLeavesWithTheRemovalOfWhatHasVanished)
{
    for (const char* name : {"gone.vst3", "shell.vst3", "stays.vst3"})
        Write(name);
    registry.SetBannedLocators(
        {BanOf(At("gone.vst3")), BannedModule{At("shell.vst3", L"1")}, BanOf(At("stays.vst3"))});
    std::filesystem::remove(plugins / "gone.vst3");
    std::filesystem::remove(plugins / "shell.vst3");
    Collect();
    EXPECT_THAT(vanished, ElementsAre(At("gone.vst3"), At("shell.vst3"), At("shell.vst3", L"1")));
    EXPECT_TRUE(registry.IsFileGone(At("gone.vst3")));
    EXPECT_TRUE(registry.IsFileGone(At("shell.vst3", L"1")));
    EXPECT_FALSE(registry.IsFileGone(At("stays.vst3")));
    EXPECT_THAT(ended, IsEmpty());
    registry.RemovePluginLocators(vanished);
    EXPECT_THAT(ended, ElementsAre(At("gone.vst3"), At("shell.vst3", L"1")));
}

TEST_F(RegistryBansTest, ABannedPluginInNoFolderAnyMoreKeepsItsBan)
{
    Write("a.vst3");
    registry.SetBannedLocators({BanOf(At("a.vst3"))});
    registry.GetPluginTechnology(TechnologyType::VST3)->SetPluginDirectories({});
    Collect();
    EXPECT_THAT(vanished, ElementsAre(At("a.vst3")));
    EXPECT_FALSE(registry.IsFileGone(At("a.vst3")));
    registry.RemovePluginLocators(vanished);
    EXPECT_THAT(ended, IsEmpty());
}

TEST_F(RegistryBansTest, ABannedPluginOnADriveThatIsAwayKeepsItsBan)
{
    const std::filesystem::path drive = folder / "drive";
    const PluginLocator away(TechnologyType::VST3, ToWide(drive / "a.vst3"));
    registry.SetBannedLocators({BannedModule{away}});
    // In no registered folder: nothing tells a drive that is away from a folder that was deleted.
    Collect();
    registry.RemovePluginLocators(vanished);
    EXPECT_THAT(ended, IsEmpty());
    // In a registered one.
    registry.GetPluginTechnology(TechnologyType::VST3)->AddPluginDirectories({ToWide(drive)});
    Collect();
    EXPECT_THAT(vanished, IsEmpty());
    registry.RemovePluginLocators({away});
    EXPECT_THAT(ended, IsEmpty());
    std::filesystem::create_directory(drive);
    Collect();
    registry.RemovePluginLocators(vanished);
    EXPECT_THAT(ended, ElementsAre(away));
}

TEST_F(RegistryBansTest, ARemovalThatFollowsNoSearchEndsNoBan)
{
    registry.SetBannedLocators({BannedModule{At("gone.vst3")}});
    registry.RemovePluginLocators({At("gone.vst3")});
    EXPECT_THAT(ended, IsEmpty());
    Collect();
    registry.RemovePluginLocators({At("other.vst3")});
    registry.RemovePluginLocators({At("gone.vst3")});
    EXPECT_THAT(ended, IsEmpty());
}

} // namespace

} // namespace zetaudiofilterhost
