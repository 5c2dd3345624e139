#include <zetaudiofilterhost/PluginModuleInfoManager.h>

#include <functional>
#include <thread>

#include <gmock/gmock.h>

#include "testing/RegistryFixture.h"
#include <zetaudiofilterhost/AudioFilterDescriptorManager.h>
#include <zetaudiofilterhost/ResetRegistry.h>

namespace zetaudiofilterhost {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PluginModuleInfoManagerTest : public RegistryFixture
{
  protected:
    std::shared_ptr<PluginModuleInfo> Add(const PluginLocator& locator, const std::wstring& name,
                                          bool enabled = true)
    {
        auto info = MakeInfo(locator, name);
        info->SetEnabled(enabled);
        registry.AddModule(info);
        return info;
    }
    static std::string Text(const std::vector<std::shared_ptr<PluginModuleInfo>>& infos)
    {
        return PluginModuleInfoManager::ToConfigurationText(infos);
    }
};

TEST_F(PluginModuleInfoManagerTest, StartsEmptyWithEveryTechnology)
{
    EXPECT_EQ(registry.PluginInfoBegin(), registry.PluginInfoEnd());
    EXPECT_EQ(registry.RecordCount(), 0u);
    for (const int code : {2, 3, 4, 5}) {
        ASSERT_TRUE(registry.GetPluginTechnology(code));
        EXPECT_EQ(static_cast<int>(registry.GetPluginTechnology(code)->GetType()), code);
    }
    for (const int code : {-1, 0, 1, 6})
        EXPECT_FALSE(registry.GetPluginTechnology(code));
    EXPECT_FALSE(registry.Find(Vst(L"/a.so")));
    EXPECT_EQ(PluginModuleInfoManager::GetInstance(), PluginModuleInfoManager::GetInstance());
}

TEST_F(PluginModuleInfoManagerTest, ShowsWorkingRecordsInTheOrderOfTheirLocators)
{
    Add(Vst(L"/c.so"), L"C");
    Add(Vst(L"/a.so", L"2"), L"A2");
    Add(Vst(L"/a.so", L"1"), L"A1");
    for (const ModuleStatus status :
         {ModuleStatus::Failed, ModuleStatus::NotAPlugin, ModuleStatus::Skipped, ModuleStatus::Unscanned}) {
        const auto info =
            MakeInfo(Vst(L"/b" + std::to_wstring(static_cast<int>(status)) + L".so"), L"not shown");
        info->SetStatus(status);
        registry.AddModule(info);
    }
    EXPECT_THAT(Shown(registry), ElementsAre(L"A1", L"A2", L"C"));
    EXPECT_EQ(registry.RecordCount(), 7u);
    std::vector<std::wstring> paths;
    for (const auto& info : registry.AllRecords())
        paths.push_back(info->GetLocator().GetPath());
    EXPECT_THAT(paths, ElementsAre(L"/a.so", L"/a.so", L"/b1.so", L"/b2.so", L"/b3.so", L"/b4.so", L"/c.so"));
    EXPECT_EQ(registry.PluginInfoEnd() - registry.PluginInfoBegin(), 3);
    EXPECT_EQ(registry.FindModule(Vst(L"/a.so")).size(), 2u);
    EXPECT_EQ(registry.FindModule(Vst(L"/a.so", L"2")).size(), 2u);
    EXPECT_THAT(registry.FindModule({TechnologyType::VST3, L"/a.so"}), IsEmpty());
    EXPECT_TRUE(registry.Find(Vst(L"/a.so", L"2")));
    EXPECT_FALSE(registry.Find(Vst(L"/a.so")));
}

TEST_F(PluginModuleInfoManagerTest, ARecordReplacesTheOneOfItsLocator)
{
    Add(Vst(L"/a.so"), L"Old");
    Add(Vst(L"/a.so"), L"New");
    EXPECT_THAT(Shown(registry), ElementsAre(L"New"));
}

TEST_F(PluginModuleInfoManagerTest, RecordsThatNameNothingAreNotAdded)
{
    registry.AddModule(nullptr);
    Add(PluginLocator(), L"empty");
    Add({TechnologyType::Unknown, L"/a.so"}, L"no technology");
    EXPECT_EQ(registry.RecordCount(), 0u);
    EXPECT_TRUE(HasTraced("a record without technology or path is not added"));
    registry.AddConfiguration(
        Text({nullptr, MakeInfo({TechnologyType::Unknown, L"/a"}), MakeInfo(Vst(L"/b"))}), false);
    EXPECT_EQ(registry.RecordCount(), 1u);
}

TEST_F(PluginModuleInfoManagerTest, ARemovedRecordComesBackWithItsChoice)
{
    Add(Vst(L"/a.so"), L"A", false);
    Add(Vst(L"/b.so"), L"B", true);
    registry.RemovePluginLocators({Vst(L"/a.so"), Vst(L"/b.so"), Vst(L"/unknown.so")});
    EXPECT_THAT(Shown(registry), IsEmpty());
    EXPECT_FALSE(Add(Vst(L"/a.so"), L"A")->IsEnabled());
    EXPECT_TRUE(Add(Vst(L"/b.so"), L"B")->IsEnabled());
}

TEST_F(PluginModuleInfoManagerTest, AChoiceIsGivenBackOnceAndThenFollowsTheRecord)
{
    Add(Vst(L"/a.so"), L"A", false);
    registry.RemovePluginLocators({Vst(L"/a.so")});
    Add(Vst(L"/a.so"), L"A")->SetEnabled(true);
    registry.RemovePluginLocators({Vst(L"/a.so")});
    EXPECT_TRUE(Add(Vst(L"/a.so"), L"A")->IsEnabled());
}

TEST_F(PluginModuleInfoManagerTest, RemovingAModuleCoversItsSubcomponents)
{
    Add(Vst(L"/shell.so", L"1"), L"One", false);
    Add(Vst(L"/shell.so", L"2"), L"Two");
    Add(Vst(L"/shell.so2"), L"Neighbour");
    registry.RemovePluginLocators({Vst(L"/shell.so")});
    EXPECT_THAT(Shown(registry), ElementsAre(L"Neighbour"));
    EXPECT_FALSE(Add(Vst(L"/shell.so", L"1"), L"One")->IsEnabled());
    EXPECT_TRUE(Add(Vst(L"/shell.so", L"2"), L"Two")->IsEnabled());

    registry.RemovePluginLocators({Vst(L"/shell.so", L"2")});
    EXPECT_THAT(Shown(registry), ElementsAre(L"One", L"Neighbour"));
}

TEST_F(PluginModuleInfoManagerTest, WhatAScanFoundIsMerged)
{
    Add(Vst(L"/a.so"), L"A");
    registry.AddConfiguration(Text({MakeInfo(Vst(L"/b.so"), L"B"), MakeInfo(Vst(L"/c.so"), L"C")}), false);
    EXPECT_THAT(Shown(registry), ElementsAre(L"A", L"B", L"C"));
    EXPECT_THAT(FoldersOf(registry, TechnologyType::VST), IsEmpty());
}

TEST_F(PluginModuleInfoManagerTest, AScanDoesNotChangeTheUsersChoice)
{
    Add(Vst(L"/kept.so"), L"Kept", false);
    Add(Vst(L"/removed.so"), L"Removed", false);
    registry.RemovePluginLocators({Vst(L"/removed.so")});
    registry.AddConfiguration(Text({MakeInfo(Vst(L"/kept.so")), MakeInfo(Vst(L"/removed.so"))}), false);
    EXPECT_FALSE(registry.Find(Vst(L"/kept.so"))->IsEnabled());
    EXPECT_FALSE(registry.Find(Vst(L"/removed.so"))->IsEnabled());
}

TEST_F(PluginModuleInfoManagerTest, AScanSpeaksForTheWholeOfEachModuleThatItMentions)
{
    Add(Vst(L"/a.so"), L"Once plain");
    Add(Vst(L"/b.so", L"1"), L"Once shell", false);
    Add(Vst(L"/b.so", L"2"), L"Once shell");
    Add(Vst(L"/c.so", L"1"), L"Untouched");
    registry.AddConfiguration(
        Text({MakeInfo(Vst(L"/a.so", L"1"), L"Shell one"), MakeInfo(Vst(L"/a.so", L"2"), L"Shell two"),
              MakeInfo(Vst(L"/b.so"), L"Plain")}),
        false);
    EXPECT_THAT(Shown(registry), ElementsAre(L"Shell one", L"Shell two", L"Plain", L"Untouched"));
    EXPECT_FALSE(Add(Vst(L"/b.so", L"1"), L"Shell again")->IsEnabled());
}

TEST_F(PluginModuleInfoManagerTest, AConfigurationWithFoldersBringsFoldersChoicesAndFlags)
{
    PluginModuleInfoManager other;
    other.GetPluginTechnology(TechnologyType::VST)->SetPluginDirectories({L"/one", L"/two"});
    const auto disabled = MakeInfo(Vst(L"/a.so"), L"A");
    disabled->SetEnabled(false);
    other.AddModule(disabled);
    const auto gone = MakeInfo(Vst(L"/gone.so"));
    gone->SetEnabled(false);
    other.AddModule(gone);
    other.RemovePluginLocators({Vst(L"/gone.so")});
    other.SaveConfiguration(file, true);

    Add(Vst(L"/a.so", L"sub"), L"Stays");
    registry.AddConfiguration(zettesting::ReadAll(path), true);
    EXPECT_EQ(FoldersOf(registry, TechnologyType::VST), FoldersOf(other, TechnologyType::VST));
    EXPECT_EQ(FoldersOf(registry, TechnologyType::VST).size(), 2u);
    EXPECT_FALSE(registry.Find(Vst(L"/a.so"))->IsEnabled());
    EXPECT_TRUE(registry.Find(Vst(L"/a.so", L"sub")));
    EXPECT_FALSE(Add(Vst(L"/gone.so"), L"Back")->IsEnabled());
}

TEST_F(PluginModuleInfoManagerTest, ATextThatIsNoConfigurationChangesNothing)
{
    Add(Vst(L"/a.so"), L"A");
    const std::string good = Text({MakeInfo(Vst(L"/b.so"))});
    for (const std::string& bad : {std::string(), std::string("nonsense"), good.substr(0, good.size() - 3)})
        EXPECT_THROW(registry.AddConfiguration(bad, false), std::runtime_error);
    try {
        registry.AddConfiguration("<audioplugins version=\"1.0\">\n<module locator=\"?\"/>\n</audioplugins>",
                                  false);
        FAIL() << "accepted";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(),
                     "plug-in configuration, line 2: element module, attribute locator: \"?\" names "
                     "no plug-in");
    }
    EXPECT_THAT(Shown(registry), ElementsAre(L"A"));
}

TEST_F(PluginModuleInfoManagerTest, BanningHidesARecordAndUnbanningShowsItWithItsChoice)
{
    Add(Vst(L"/a.so"), L"A", false);
    Add(Vst(L"/shell.so", L"1"), L"One");
    Add(Vst(L"/shell.so", L"2"), L"Two");
    registry.SetBannedLocators({BannedModule{Vst(L"/a.so")}, BannedModule{Vst(L"/shell.so", L"2")}});
    EXPECT_THAT(Shown(registry), ElementsAre(L"One"));
    EXPECT_EQ(registry.RecordCount(), 3u);
    registry.SetBannedLocators({BannedModule{Vst(L"/shell.so")}});
    EXPECT_THAT(Shown(registry), ElementsAre(L"A"));
    EXPECT_FALSE((*registry.PluginInfoBegin())->IsEnabled());
    registry.SetBannedLocators({});
    EXPECT_THAT(Shown(registry), ElementsAre(L"A", L"One", L"Two"));
}

TEST_F(PluginModuleInfoManagerTest, BansMayComeFromOtherThreads)
{
    for (int index = 0; index < 50; ++index)
        Add(Vst(L"/" + std::to_wstring(index) + L".so"), L"P");
    std::thread banning([this] {
        for (int round = 0; round < 200; ++round)
            registry.SetBannedLocators({BannedModule{Vst(L"/" + std::to_wstring(round % 50) + L".so")}});
    });
    std::vector<PluginLocator> vanished;
    for (int round = 0; round < 50; ++round) {
        Add(Vst(L"/new" + std::to_wstring(round) + L".so"), L"N");
        registry.RemovePluginLocators({Vst(L"/new" + std::to_wstring(round) + L".so")});
        registry.CollectPotentialPlugins(true, vanished);
    }
    banning.join();
    EXPECT_EQ(Shown(registry).size(), 49u);
}

TEST_F(PluginModuleInfoManagerTest, TheDisplayStringIsTheModulesPathInValidUnicode)
{
    EXPECT_EQ(registry.GetDisplayStringForLocator(Vst(L"/lib/a b.so", L"sub")), L"/lib/a b.so");
    EXPECT_EQ(registry.GetDisplayStringForLocator(PluginLocator()), L"");
    EXPECT_EQ(registry.GetDisplayStringForLocator(Vst({L'/', static_cast<wchar_t>(0xdcff), L'\n'})),
              L"/\ufffd ");
}

TEST_F(PluginModuleInfoManagerTest, DefaultFoldersTakeThePlaceOfVstsAndOfNoOthers)
{
    const auto vst3 = registry.GetPluginTechnology(TechnologyType::VST3);
    registry.ResetAllToDefaultFolders();
    const auto vstDefaults = FoldersOf(registry, TechnologyType::VST);
    const auto vst3Defaults = FoldersOf(registry, TechnologyType::VST3);

    registry.GetPluginTechnology(TechnologyType::VST)->SetPluginDirectories({L"/my own"});
    vst3->SetPluginDirectories({L"/my own"});
    const auto own = FoldersOf(registry, TechnologyType::VST3);
    registry.ResetToDefaultFolders();
    EXPECT_EQ(FoldersOf(registry, TechnologyType::VST), vstDefaults);
    EXPECT_EQ(FoldersOf(registry, TechnologyType::VST3), own);
    registry.ResetAllToDefaultFolders();
    EXPECT_EQ(FoldersOf(registry, TechnologyType::VST3), vst3Defaults);

    vst3->SetPluginDirectories({});
    registry.ResetToDefaultFolders();
    EXPECT_EQ(FoldersOf(registry, TechnologyType::VST3), vst3Defaults)
        << "without any folder no plug-in of that technology would be found";
}

TEST_F(PluginModuleInfoManagerTest, ResetEmptiesEverything)
{
    Add(Vst(L"/a.so"), L"A", false);
    registry.ResetToDefaultFolders();
    registry.SetBannedLocators({BannedModule{Vst(L"/a.so")}});
    ResetRegistry(registry);
    EXPECT_EQ(registry.RecordCount(), 0u);
    EXPECT_THAT(FoldersOf(registry, TechnologyType::VST), IsEmpty());
    EXPECT_TRUE(Add(Vst(L"/a.so"), L"A")->IsEnabled());
    EXPECT_THAT(Shown(registry), ElementsAre(L"A"));
}

TEST_F(PluginModuleInfoManagerTest, CountsTheChangesOfTheRecordsThatItHolds)
{
    const auto info = Add(Vst(L"/a.so"), L"A");
    const auto before = registry.GetRecordChanges();
    Add(Vst(L"/b.so"), L"B");
    MakeInfo(Vst(L"/c.so"))->SetEnabled(false);
    info->SetEnabled(true);
    EXPECT_EQ(registry.GetRecordChanges(), before) << "nothing that it held has changed";
    info->SetEnabled(false);
    auto expected = before;
    ++expected.enabled;
    EXPECT_EQ(registry.GetRecordChanges(), expected);
    const std::function<void()> changes[] = {
        [&] { info->SetName(L"New"); },           [&] { info->SetVersionString(L"2"); },
        [&] { info->SetLocator(Vst(L"/d.so")); }, [&] { info->SetHasAnyNonSynthEffect(false); },
        [&] { info->SetHasAnySynth(true); },      [&] { info->SetStatus(ModuleStatus::Skipped); }};
    for (const auto& change : changes) {
        change();
        ++expected.content;
        EXPECT_EQ(registry.GetRecordChanges(), expected);
    }
}

TEST_F(PluginModuleInfoManagerTest, ChangesRaiseNoSignalByThemselves)
{
    int raised = 0;
    registry.GetPluginInfosChangedSignal().Connect([&raised] { ++raised; });
    Add(Vst(L"/a.so"), L"A");
    registry.AddConfiguration(Text({MakeInfo(Vst(L"/b.so"))}), false);
    registry.RemovePluginLocators({Vst(L"/a.so")});
    EXPECT_EQ(raised, 0);
    registry.GetPluginInfosChangedSignal()();
    EXPECT_EQ(raised, 1);
}

TEST(AudioFilterDescriptorManager, OffersSynthsUntilToldOtherwise)
{
    AudioFilterDescriptorManager* const manager = AudioFilterDescriptorManager::GetInstance();
    EXPECT_TRUE(manager->AreSynthsEnabled());
    manager->SetSynthsEnabled(false);
    EXPECT_FALSE(AudioFilterDescriptorManager::GetInstance()->AreSynthsEnabled());
    manager->SetSynthsEnabled(true);
}

} // namespace

} // namespace zetaudiofilterhost
