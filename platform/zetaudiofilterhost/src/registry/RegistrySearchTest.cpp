#include <gmock/gmock.h>

#include "testing/RegistryFixture.h"
#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zettesting/TestPlugins.h>

namespace zetaudiofilterhost {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zettesting::ToWide;
using zettesting::WriteAll;
using Locators = std::vector<PluginLocator>;

/// Searches for new plug-ins among files that look like VST3 modules.
class RegistrySearchTest : public RegistryFixture
{
  protected:
    RegistrySearchTest()
    {
        std::filesystem::create_directory(plugins);
        Folders().SetPluginDirectories({ToWide(plugins)});
    }

    PluginTechnology& Folders() { return *registry.GetPluginTechnology(TechnologyType::VST3); }
    PluginLocator At(const std::filesystem::path& name) const
    {
        return {TechnologyType::VST3, ToWide(plugins / name)};
    }
    PluginLocator MakeFile(const std::filesystem::path& name)
    {
        WriteAll(plugins / name, "plug-in");
        return At(name);
    }
    /// Puts a record into the registry as a scan does.
    void AddScanned(const PluginLocator& locator, ModuleStatus status = ModuleStatus::Working)
    {
        const auto info = MakeInfo(locator);
        const ModuleFileStamp stamp = GetModuleFileStamp(locator);
        info->SetFileStamp(stamp.size, stamp.time);
        info->SetStatus(status);
        registry.AddModule(info);
    }
    Locators Collect(bool newOnly) { return registry.CollectPotentialPlugins(newOnly, vanished); }

    const std::filesystem::path plugins = folder / "plugins";
    Locators vanished{PluginLocator(TechnologyType::AU, L"left over")};
};

TEST_F(RegistrySearchTest, AnEmptyRegistryFindsEverythingInTheOrderOfLocators)
{
    std::filesystem::create_directory(plugins / "a");
    const auto inner = MakeFile("a/x.vst3");
    const auto outer = MakeFile("b.vst3");
    EXPECT_THAT(Collect(true), ElementsAre(inner, outer));
    EXPECT_THAT(vanished, IsEmpty());
    EXPECT_THAT(Collect(false), ElementsAre(inner, outer));
}

TEST_F(RegistrySearchTest, KnownPluginsAreNotNewWhateverTheirStatus)
{
    const auto working = MakeFile("working.vst3");
    const auto failed = MakeFile("failed.vst3");
    const auto skipped = MakeFile("skipped.vst3");
    const auto shell = MakeFile("shell.vst3");
    const auto unscanned = MakeFile("unscanned.vst3");
    const auto unknown = MakeFile("unknown.vst3");
    AddScanned(working);
    AddScanned(failed, ModuleStatus::Failed);
    AddScanned(skipped, ModuleStatus::Skipped);
    AddScanned({TechnologyType::VST3, shell.GetPath(), L"1"});
    AddScanned({TechnologyType::VST3, shell.GetPath(), L"2"});
    AddScanned(unscanned, ModuleStatus::Unscanned);
    EXPECT_THAT(Collect(true), ElementsAre(unknown, unscanned));
    EXPECT_THAT(Collect(false), ElementsAre(failed, shell, skipped, unknown, unscanned, working));
    EXPECT_THAT(vanished, IsEmpty());
}

TEST_F(RegistrySearchTest, APluginWhoseFileChangedIsNewAgain)
{
    const auto grown = MakeFile("grown.vst3");
    const auto touched = MakeFile("touched.vst3");
    const auto same = MakeFile("same.vst3");
    for (const auto& locator : {grown, touched, same})
        AddScanned(locator);
    EXPECT_THAT(Collect(true), IsEmpty());
    WriteAll(plugins / "grown.vst3", "a longer plug-in");
    std::filesystem::last_write_time(plugins / "touched.vst3",
                                     std::filesystem::last_write_time(plugins / "touched.vst3") +
                                         std::chrono::seconds(2));
    EXPECT_THAT(Collect(true), ElementsAre(grown, touched));
    EXPECT_THAT(vanished, IsEmpty());
}

TEST_F(RegistrySearchTest, ARecordWithoutFileStampIsNotTakenForChanged)
{
    registry.AddModule(MakeInfo(MakeFile("a.vst3")));
    EXPECT_THAT(Collect(true), IsEmpty());
}

TEST_F(RegistrySearchTest, AnUnreadableFileIsTriedByEveryScanAndNeverShown)
{
    const auto unreadable = MakeFile("unreadable.vst3");
    AddScanned(unreadable, ModuleStatus::Unreadable);
    EXPECT_THAT(Collect(true), ElementsAre(unreadable));
    EXPECT_THAT(Shown(registry), IsEmpty());
    registry.SaveConfiguration(file, true);
    EXPECT_THAT(zettesting::ReadAll(path), ::testing::HasSubstr("status=\"unreadable\""));
    ASSERT_TRUE(registry.LoadConfiguration(file));
    EXPECT_EQ(Held(registry, unreadable).GetStatus(), ModuleStatus::Unreadable);
    EXPECT_THAT(Collect(true), ElementsAre(unreadable));
}

TEST_F(RegistrySearchTest, WhatCouldNotBeLookedAtWhenItDidNotWorkIsNewWhenItCan)
{
    const std::filesystem::path library = zettesting::BundleLibrary(plugins / "bundle.vst3");
    std::filesystem::create_directories(library.parent_path());
    AddScanned(At("bundle.vst3"), ModuleStatus::NotAPlugin);
    EXPECT_THAT(Collect(true), IsEmpty());
    WriteAll(library, "plug-in");
    EXPECT_THAT(Collect(true), ElementsAre(At("bundle.vst3")));
}

TEST_F(RegistrySearchTest, AFileThatIsGoneHasVanished)
{
    AddScanned(MakeFile("a.vst3"));
    const auto stays = MakeFile("b.vst3");
    AddScanned(stays);
    std::filesystem::remove(plugins / "a.vst3");
    EXPECT_THAT(Collect(true), IsEmpty());
    EXPECT_THAT(vanished, ElementsAre(At("a.vst3")));
    registry.RemovePluginLocators(vanished);
    Collect(true);
    EXPECT_THAT(vanished, IsEmpty());
    EXPECT_EQ(registry.RecordCount(), 1u);
}

TEST_F(RegistrySearchTest, AShellThatIsGoneVanishesAsAModuleAndWithEachSubComponent)
{
    const PluginLocator one(TechnologyType::VST3, At("shell.vst3").GetPath(), L"1");
    const PluginLocator two(TechnologyType::VST3, At("shell.vst3").GetPath(), L"2");
    AddScanned(one);
    AddScanned(two);
    Collect(true);
    EXPECT_THAT(vanished, ElementsAre(At("shell.vst3"), one, two));
    registry.RemovePluginLocators(vanished);
    EXPECT_EQ(registry.RecordCount(), 0u);
    EXPECT_THAT(registry.PutBackUnreached(), IsEmpty());
}

TEST_F(RegistrySearchTest, AFileInNoRegisteredFolderAnyMoreHasVanished)
{
    AddScanned(MakeFile("a.vst3"));
    Folders().RemovePluginDirectories({ToWide(plugins)});
    EXPECT_THAT(Collect(true), IsEmpty());
    EXPECT_THAT(vanished, ElementsAre(At("a.vst3")));
}

TEST_F(RegistrySearchTest, AFolderOfAnotherTechnologyDoesNotCount)
{
    const PluginLocator vst(TechnologyType::VST, ToWide(plugins / "a.so"));
    WriteAll(plugins / "a.so", "plug-in");
    registry.AddModule(MakeInfo(vst));
    Collect(true);
    EXPECT_THAT(vanished, ElementsAre(vst));
}

TEST_F(RegistrySearchTest, PluginsOfAFolderThatCannotBeReachedAreOffline)
{
    const std::filesystem::path drive = folder / "drive";
    Folders().AddPluginDirectories({ToWide(drive)});
    const PluginLocator offline(TechnologyType::VST3, ToWide(drive / "deep" / "a.vst3"));
    std::filesystem::create_directories(drive / "deep");
    WriteAll(drive / "deep" / "a.vst3", "plug-in");
    AddScanned(offline);
    std::filesystem::rename(drive, folder / "unplugged");
    EXPECT_THAT(Collect(true), IsEmpty());
    EXPECT_THAT(vanished, IsEmpty());
    EXPECT_THAT(Collect(false), IsEmpty());
    EXPECT_THAT(vanished, IsEmpty());

    std::filesystem::rename(folder / "unplugged", drive);
    EXPECT_THAT(Collect(true), IsEmpty());
    EXPECT_THAT(Collect(false), ElementsAre(offline));
    std::filesystem::remove(drive / "deep" / "a.vst3");
    Collect(true);
    EXPECT_THAT(vanished, ElementsAre(offline));
}

TEST_F(RegistrySearchTest, APluginOfAnUnreachableFolderInAReachableOneIsOffline)
{
    Folders().AddPluginDirectories({ToWide(plugins / "share")});
    registry.AddModule(MakeInfo(At("share/a.vst3")));
    registry.AddModule(MakeInfo(At("other/a.vst3")));
    Collect(true);
    EXPECT_THAT(vanished, ElementsAre(At("other/a.vst3")));
}

TEST_F(RegistrySearchTest, BannedPluginsAreLeftOut)
{
    const auto banned = MakeFile("banned.vst3");
    const auto partly = MakeFile("partly.vst3");
    registry.SetBannedLocators(
        {BannedModule{banned}, BannedModule{{TechnologyType::VST3, partly.GetPath(), L"sub"}}});
    EXPECT_THAT(Collect(true), ElementsAre(partly));
    EXPECT_THAT(Collect(false), ElementsAre(partly));
    EXPECT_THAT(vanished, IsEmpty());
}

TEST_F(RegistrySearchTest, ABannedPluginWhoseFileIsGoneIsKnownAndHasVanished)
{
    registry.SetBannedLocators({BannedModule{At("gone.vst3")},
                                BannedModule{{TechnologyType::VST3, At("shell.vst3").GetPath(), L"sub"}}});
    Collect(true);
    const PluginLocator sub(TechnologyType::VST3, At("shell.vst3").GetPath(), L"sub");
    EXPECT_THAT(vanished, ElementsAre(At("gone.vst3"), At("shell.vst3"), sub));
    // A reload does the same: the plug-in leaves the banned list, and then the search comes.
    registry.SetBannedLocators({});
    Collect(true);
    EXPECT_THAT(vanished, ElementsAre(At("gone.vst3"), At("shell.vst3"), sub));
    registry.RemovePluginLocators(vanished);
    Collect(true);
    EXPECT_THAT(vanished, IsEmpty());
}

TEST_F(RegistrySearchTest, APluginThatWasBannedAndIsThereIsNew)
{
    const auto banned = MakeFile("banned.vst3");
    registry.SetBannedLocators({BannedModule{banned}});
    registry.RemovePluginLocators({banned});
    registry.SetBannedLocators({});
    EXPECT_THAT(Collect(true), ElementsAre(banned));
    EXPECT_THAT(vanished, IsEmpty());
}

TEST_F(RegistrySearchTest, ABannedPluginStaysKnownWhileItIsBanned)
{
    registry.SetBannedLocators({BannedModule{At("gone.vst3")}});
    registry.RemovePluginLocators({At("gone.vst3")});
    Collect(true);
    EXPECT_THAT(vanished, ElementsAre(At("gone.vst3")));
}

} // namespace

} // namespace zetaudiofilterhost
