#include "scan/ScanChanges.h"

#include <memory>

#include <gmock/gmock.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetaudiopluginhost/ResetBannedPlugins.h>
#include <zettesting/TemporaryFolder.h>

namespace zetaudiopluginmanager {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiofilterhost::TechnologyType;
using zetaudiopluginhost::BanInfo;
using zetaudiopluginhost::BannedPluginManager;
using Locators = RegistrySnapshot::Locators;

PluginLocator Vst(const std::wstring& path, const std::wstring& subcomponent = {})
{
    return {TechnologyType::VST, path, subcomponent};
}

std::vector<std::wstring> Paths(const std::vector<ChangedPlugin>& plugins)
{
    std::vector<std::wstring> paths;
    for (const ChangedPlugin& plugin : plugins)
        paths.push_back(plugin.locator.GetPath() + plugin.locator.GetSubcomponent());
    return paths;
}

class ChangesOfAScan : public testing::Test
{
  protected:
    ChangesOfAScan() { ForgetAll(); }
    ~ChangesOfAScan() override { ForgetAll(); }

    static void ForgetAll()
    {
        ResetRegistry(*PluginModuleInfoManager::GetInstance());
        ResetBannedPlugins(*BannedPluginManager::GetInstance());
    }
    void Put(const PluginLocator& locator, ModuleStatus status = ModuleStatus::Working, std::int64_t time = 1,
             const std::wstring& version = L"1")
    {
        const auto info = std::make_shared<PluginModuleInfo>(locator);
        info->SetName(L"Name of " + locator.GetPath());
        info->SetStatus(status);
        info->SetReason(status == ModuleStatus::Working ? "" : "reason");
        info->SetVersionString(version);
        info->SetFileStamp(10, time);
        registry.AddModule(info);
    }
    RegistrySnapshot Now() const { return {registry, banned}; }
    ScanChanges Changes(const Locators& scanned, std::vector<ChangedPlugin> unreached = {}) const
    {
        return before.ChangesTo(Now(), scanned, std::move(unreached));
    }

    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
    BannedPluginManager& banned = *BannedPluginManager::GetInstance();
    RegistrySnapshot before;
};

TEST_F(ChangesOfAScan, NothingHasChangedWhereNothingHas)
{
    Put(Vst(L"/a"));
    Put(Vst(L"/b"), ModuleStatus::NotAPlugin);
    banned.AddBannedPlugin(Vst(L"/c"), "why");
    before = Now();
    EXPECT_EQ(Changes({Vst(L"/a"), Vst(L"/c")}), ScanChanges());
}

TEST_F(ChangesOfAScan, WhatWasScannedAndIsInNoListIsPassedOverWheneverItIsScanned)
{
    Put(Vst(L"/text"), ModuleStatus::NotAPlugin);
    Put(Vst(L"/other text"), ModuleStatus::NotAPlugin);
    Put(Vst(L"/was good"));
    banned.AddBannedPlugin(Vst(L"/was banned"), "why");
    before = Now();
    Put(Vst(L"/shell"), ModuleStatus::Skipped);
    Put(Vst(L"/was good"), ModuleStatus::NotAPlugin);
    Put(Vst(L"/failed"), ModuleStatus::Failed);
    banned.RemoveBannedPlugin(Vst(L"/was banned"));
    Put(Vst(L"/was banned"), ModuleStatus::NotAPlugin);
    const ScanChanges changes =
        Changes({Vst(L"/text"), Vst(L"/shell"), Vst(L"/was good"), Vst(L"/was banned"), Vst(L"/failed")});
    EXPECT_THAT(Paths(changes.passedOver), ElementsAre(L"/shell", L"/text"));
    ASSERT_FALSE(changes.passedOver.empty());
    EXPECT_EQ(changes.passedOver[0].reason, "reason");
    EXPECT_THAT(Paths(changes.removed), ElementsAre(L"/was good", L"/was banned")) << "told once";
    EXPECT_THAT(Changes({Vst(L"/text")}, {{Vst(L"/text"), L"text", {}}}).passedOver, IsEmpty())
        << "not reached";
}

TEST_F(ChangesOfAScan, WhatWorksNowAndDidNotBeforeIsAdded)
{
    Put(Vst(L"/b"), ModuleStatus::NotAPlugin);
    banned.AddBannedPlugin(Vst(L"/c"), "why");
    before = Now();
    Put(Vst(L"/a", L"1"));
    Put(Vst(L"/a", L"2"));
    Put(Vst(L"/b"));
    banned.RemoveBannedPlugin(Vst(L"/c"));
    Put(Vst(L"/c"));
    Put(Vst(L"/other"));
    const ScanChanges changes = Changes({Vst(L"/a"), Vst(L"/b"), Vst(L"/c")});
    EXPECT_THAT(Paths(changes.added), ElementsAre(L"/a1", L"/a2", L"/b", L"/c"));
    EXPECT_THAT(Paths(changes.restored), ElementsAre(L"/c"));
    ASSERT_FALSE(changes.added.empty());
    EXPECT_EQ(changes.added[0].name, L"Name of /a");
    EXPECT_THAT(changes.removed, IsEmpty());
}

TEST_F(ChangesOfAScan, AnotherFileOrVersionIsAnUpdateAndAnotherChoiceIsNot)
{
    for (const wchar_t* path : {L"/file", L"/same", L"/version", L"/other"})
        Put(Vst(path));
    before = Now();
    Put(Vst(L"/file"), ModuleStatus::Working, 2);
    Put(Vst(L"/version"), ModuleStatus::Working, 1, L"2");
    Put(Vst(L"/other"), ModuleStatus::Working, 2);
    registry.Find(Vst(L"/same"))->SetEnabled(false);
    const ScanChanges changes = Changes({Vst(L"/file"), Vst(L"/same"), Vst(L"/version")});
    EXPECT_THAT(Paths(changes.updated), ElementsAre(L"/file", L"/version"));
    EXPECT_THAT(changes.added, IsEmpty());
}

TEST_F(ChangesOfAScan, WhatIsNotListedAnyMoreHasGone)
{
    for (const wchar_t* path : {L"/bad", L"/none", L"/locked", L"/waits"})
        Put(Vst(path));
    Put(Vst(L"/shell", L"1"));
    banned.AddBannedPlugin(Vst(L"/ban gone"), "why");
    banned.AddBannedPlugin(Vst(L"/ban waits"), "why");
    before = Now();
    Put(Vst(L"/none"), ModuleStatus::NotAPlugin);
    Put(Vst(L"/locked"), ModuleStatus::Unreadable);
    Put(Vst(L"/waits"), ModuleStatus::Unscanned);
    banned.AddBannedPlugin(Vst(L"/bad"), "crashed");
    Put(Vst(L"/shell", L"2"));
    registry.Find(Vst(L"/shell", L"1"))->SetStatus(ModuleStatus::Failed);
    banned.RemoveBannedPlugin(Vst(L"/ban gone"));
    banned.RemoveBannedPlugin(Vst(L"/ban waits"));
    const ScanChanges changes = Changes({Vst(L"/none"), Vst(L"/locked"), Vst(L"/waits"), Vst(L"/bad"),
                                         Vst(L"/shell"), Vst(L"/ban gone"), Vst(L"/ban waits")},
                                        {{Vst(L"/waits"), L"n", "r"}, {Vst(L"/ban waits"), L"n", "r"}});
    EXPECT_THAT(Paths(changes.removed), ElementsAre(L"/none", L"/shell1", L"/ban gone"));
    EXPECT_EQ(changes.removed.at(0).reason, "reason") << "its record says why it is no plug-in";
    EXPECT_EQ(changes.removed.at(2).reason, "");
    EXPECT_THAT(Paths(changes.added), ElementsAre(L"/shell2"));
    EXPECT_THAT(Paths(changes.unreadable), ElementsAre(L"/locked"));
    ASSERT_FALSE(changes.unreadable.empty());
    EXPECT_EQ(changes.unreadable[0].reason, "reason");
    EXPECT_THAT(Paths(changes.unreached), ElementsAre(L"/waits", L"/ban waits"));
    EXPECT_EQ(changes.banned, (std::vector{ChangedPlugin{Vst(L"/bad"), L"Name of /bad", "crashed"}}))
        << "with the name that it had";
}

TEST_F(ChangesOfAScan, AFileThatIsGoneHasGoneWhetherItWasToBeScannedOrNot)
{
    registry.GetPluginTechnology(TechnologyType::VST)->SetPluginDirectories({});
    Put(Vst(L"/no such file"));
    before = Now();
    Locators vanished;
    registry.CollectPotentialPlugins(true, vanished);
    registry.RemovePluginLocators(vanished);
    EXPECT_THAT(Paths(Changes({}).removed), ElementsAre(L"/no such file"));
}

TEST_F(ChangesOfAScan, OneThatGoesAlthoughItsFileIsThereLiesInNoFolderThatIsScanned)
{
    registry.GetPluginTechnology(TechnologyType::VST)->SetPluginDirectories({});
    const zettesting::TemporaryFolder folder;
    zettesting::WriteAll(folder / "a.so", "a");
    const PluginLocator plugin = Vst(zettesting::ToWide(folder / "a.so"));
    Put(plugin);
    before = Now();
    Locators vanished;
    registry.CollectPotentialPlugins(true, vanished);
    registry.RemovePluginLocators(vanished);
    const ScanChanges changes = Changes({});
    ASSERT_EQ(changes.removed.size(), 1u);
    EXPECT_EQ(changes.removed[0].reason, "lies in no folder that is scanned");
}

TEST_F(ChangesOfAScan, ABanThatSaysSomethingElseIsToldAndOneThatWasConfirmedIsNot)
{
    const BanInfo old{"crashed", 100, {10, 1}, false};
    for (const wchar_t* path : {L"/build", L"/reason", L"/same", L"/unasked"})
        banned.AddBannedPlugin(Vst(path), old);
    before = Now();
    banned.AddBannedPlugin(Vst(L"/build"), BanInfo{"crashed", 200, {10, 2}, false});
    banned.AddBannedPlugin(Vst(L"/reason"), BanInfo{"hung", 200, {10, 1}, false});
    banned.AddBannedPlugin(Vst(L"/same"), BanInfo{"crashed", 200, {10, 1}, false});
    banned.AddBannedPlugin(Vst(L"/unasked"), BanInfo{"hung", 200, {10, 1}, false});
    banned.AddBannedPlugin(Vst(L"/whole"), BanInfo{"crashed", 200, {10, 1}, false});
    const ScanChanges changes =
        Changes({Vst(L"/build"), Vst(L"/reason"), Vst(L"/same"), Vst(L"/whole", L"1")});
    EXPECT_THAT(Paths(changes.banned), ElementsAre(L"/build", L"/reason", L"/whole"));
    ASSERT_EQ(changes.banned.size(), 3u);
    EXPECT_EQ(changes.banned[2].name, L"whole") << "its file's, where no name is known";
}

TEST_F(ChangesOfAScan, ABanOfTheOnlyOneThatWasScannedIsToldUnlessItWasNotReached)
{
    banned.AddBannedPlugin(Vst(L"/same"), BanInfo{"crashed", 100, {10, 1}, false});
    before = Now();
    EXPECT_THAT(Paths(Changes({Vst(L"/same")}).banned), ElementsAre(L"/same"));
    EXPECT_THAT(Changes({Vst(L"/same")}, {{Vst(L"/same"), L"n", "r"}}).banned, IsEmpty());
    EXPECT_THAT(Changes({Vst(L"/other")}).banned, IsEmpty());
}

TEST_F(ChangesOfAScan, WhatWasPutBackOrHasNoResultWasNotReached)
{
    for (const wchar_t* path : {L"/back", L"/fine", L"/bad"})
        Put(Vst(path));
    Put(Vst(L"/later"), ModuleStatus::Unscanned);
    Put(Vst(L"/shell", L"1"));
    Put(Vst(L"/shell", L"2"));
    banned.AddBannedPlugin(Vst(L"/bad"), "why");
    const auto unreached =
        FindUnreached(registry, banned,
                      {Vst(L"/shell", L"2"), Vst(L"/shell", L"1"), Vst(L"/new"), Vst(L"/later"),
                       Vst(L"/fine"), Vst(L"/bad"), Vst(L"/back"), Vst(L"/back")},
                      {Vst(L"/back"), Vst(L"/shell", L"2"), Vst(L"/unasked")}, "no scanner");
    EXPECT_THAT(unreached, ElementsAre(ChangedPlugin{Vst(L"/back"), L"Name of /back", "no scanner"},
                                       ChangedPlugin{Vst(L"/later"), L"Name of /later", "reason"},
                                       ChangedPlugin{Vst(L"/new"), L"new", "no scanner"},
                                       ChangedPlugin{Vst(L"/shell", L"2"), L"Name of /shell", "no scanner"}));
}

} // namespace

} // namespace zetaudiopluginmanager
