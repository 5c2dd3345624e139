// Bans of one build of a file, and lists of which two programs have one file.
#include <gmock/gmock.h>
#include <zetaudiopluginhost/BanReasons.h>
#include <zetaudiopluginhost/ResetBannedPlugins.h>

#include "testing/BannedFixture.h"

namespace zetaudiopluginhost {
namespace {

using namespace testing;
using zetaudiofilterhost::ModuleFileStamp;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiofilterhost::TechnologyType;

/// The module is a real file.
class BannedBuildTest : public BannedPluginManagerTest
{
  protected:
    BannedBuildTest() { zettesting::WriteAll(path, "plug-in"); }
    void Update() const { zettesting::WriteAll(path, "an update of it"); }
    ModuleFileStamp Stamp() const { return zetaudiofilterhost::GetModuleFileStamp(module); }

    const std::filesystem::path path = folder / "a.vst3";
    const PluginLocator module{TechnologyType::VST3, zettesting::ToWide(path)};
    const PluginLocator part{TechnologyType::VST3, zettesting::ToWide(path), L"part"};
};

TEST_F(BannedBuildTest, ABanAnewIsNewerThanOneThatWasLifted)
{
    manager.AddBannedPlugin(first, BanInfo{"once", 1});
    manager.AddBannedPlugin(second, BanInfo{"both", 1});
    manager.SaveConfiguration(ListFile());
    BannedPluginManager other;
    ASSERT_TRUE(other.LoadConfiguration(ListFile()));
    manager.RemoveBannedPlugin(first);
    manager.RemoveBannedPlugin(second);
    // The other one has seen it crash again.
    other.AddBannedPlugin(first, BanInfo{"again", 2, {3, 4}});
    other.SaveConfiguration(ListFile());
    manager.SaveConfiguration(ListFile());
    EXPECT_THAT(Banned(), ElementsAre(first));
    EXPECT_EQ(manager.GetBanInfo(first), (BanInfo{"again", 2, {3, 4}}));
    ASSERT_TRUE(other.LoadConfiguration(ListFile()));
    EXPECT_EQ(other.GetBanInfo(first), (BanInfo{"again", 2, {3, 4}}));
    EXPECT_FALSE(other.IsBanned(second));
}

TEST_F(BannedBuildTest, AnotherProgramsNewerStateOfABanIsTakenInAndOurOwnIsNotOverridden)
{
    manager.AddBannedPlugin(first, BanInfo{"old", 1, {1, 1}});
    manager.AddBannedPlugin(second, BanInfo{"old", 1, {1, 1}});
    manager.AddBannedPlugin(sub, BanInfo{"old", 1, {1, 1}});
    manager.SaveConfiguration(ListFile());
    BannedPluginManager other;
    ASSERT_TRUE(other.LoadConfiguration(ListFile()));
    for (const PluginLocator& locator : {first, second})
        other.AddBannedPlugin(locator, BanInfo{"theirs", 2, {2, 2}});
    other.RemoveBannedPlugin(sub);
    other.SaveConfiguration(ListFile());
    manager.AddBannedPlugin(second, BanInfo{"ours", 3, {3, 3}});
    manager.AddBannedPlugin(sub, BanInfo{"ours", 3, {3, 3}});
    manager.SaveConfiguration(ListFile());
    EXPECT_EQ(manager.GetBanInfo(first)->reason, "theirs");
    EXPECT_EQ(manager.GetBanInfo(second)->reason, "ours");
    EXPECT_EQ(manager.GetBanInfo(sub)->reason, "ours");
}

TEST_F(BannedBuildTest, BuildAndTriesComeBackFromTheFile)
{
    const BanInfo info{"no such library", 1700000000, {18446744073709551615u, -5}, true};
    manager.AddBannedPlugin(first, info);
    manager.AddBannedPlugin(second, "a user's");
    manager.SaveConfiguration(ListFile());
    EXPECT_THAT(zettesting::ReadAll(ListPath()),
                HasSubstr("filesize=\"18446744073709551615\" filetime=\"-5\" couldnotload=\"true\""));
    BannedPluginManager other;
    ASSERT_TRUE(other.LoadConfiguration(ListFile()));
    EXPECT_EQ(other.GetBanInfo(first), info);
    EXPECT_EQ(other.GetBanInfo(second)->stamp, ModuleFileStamp());
    EXPECT_FALSE(other.GetBanInfo(second)->couldNotLoad);
    // Lifting what the file had leaves nothing behind in a file of reasons or elsewhere.
    other.AddBannedPlugin(first, BanInfo{"crashed", 5});
    other.SaveConfiguration(ListFile());
    EXPECT_THAT(zettesting::ReadAll(ListPath()), Not(HasSubstr("couldnotload")));
    EXPECT_THAT(zettesting::ReadAll(ListPath()), Not(HasSubstr("filesize")));
}

TEST_F(BannedBuildTest, ABuildThatCannotBeReadIsEveryBuild)
{
    for (const char* build : {"filesize=\"99999999999999999999\" filetime=\"1\"", "filesize=\"-1\"",
                              "filesize=\"1\" filetime=\"soon\"", "couldnotload=\"perhaps\""}) {
        zettesting::WriteAll(
            ListPath(),
            std::string("<bannedplugins version=\"1.0\">\n<plugin locator=\"VST|/plugins/a.so|\" ") + build +
                "/>\n</bannedplugins>");
        ASSERT_TRUE(manager.LoadConfiguration(ListFile()));
        EXPECT_EQ(manager.GetBanInfo(first), BanInfo()) << build;
    }
}

TEST_F(BannedBuildTest, AFileOfAnOlderVersionBansEveryBuild)
{
    zettesting::WriteAll(ListPath(),
                         "<bannedplugins version=\"1.0\">\n<plugin locator=\"VST|/plugins/a.so|\" "
                         "reason=\"why\" time=\"1\"/>\n</bannedplugins>");
    ASSERT_TRUE(manager.LoadConfiguration(ListFile()));
    EXPECT_EQ(manager.GetBanInfo(first), (BanInfo{"why", 1}));
    EXPECT_FALSE(manager.IsDueAgain(first));
}

TEST_F(BannedBuildTest, AScansBanIsOfTheBuildThatIsThere)
{
    manager.AddBannedPlugin(module);
    EXPECT_EQ(manager.GetBanInfo(module)->stamp, Stamp());
    EXPECT_FALSE(manager.IsDueAgain(module));
    Update();
    EXPECT_TRUE(manager.IsDueAgain(module));
    std::filesystem::remove(path);
    EXPECT_FALSE(manager.IsDueAgain(module)) << "gone is not updated";
    EXPECT_FALSE(manager.IsDueAgain(first)) << "not banned at all";
}

TEST_F(BannedBuildTest, TheScannerSaysWhichBuildItTriedAndThatItCouldNotBeLoaded)
{
    RecordBanReason(ListPathText(), module, {"no such library", 5, {6, 7}, true});
    manager.AddBannedPlugin(module);
    EXPECT_EQ(manager.GetBanInfo(module), (BanInfo{"no such library", 5, {6, 7}, true}));
    EXPECT_TRUE(manager.IsDueAgain(module));
    // An older scanner does not say which build.
    RecordBanReason(ListPathText(), part, {"crashed", 5});
    manager.AddBannedPlugin(part);
    EXPECT_EQ(manager.GetBanInfo(part)->stamp, Stamp());
}

TEST_F(BannedBuildTest, AUsersBanIsOfEveryBuild)
{
    manager.AddBannedPlugin(module, "a user's");
    EXPECT_EQ(manager.GetBanInfo(module)->stamp, ModuleFileStamp());
    Update();
    EXPECT_FALSE(manager.IsDueAgain(module));
    manager.AddBannedPlugin(module);
    EXPECT_EQ(manager.GetBanInfo(module)->stamp, ModuleFileStamp()) << "it stays one";
    EXPECT_EQ(manager.GetBanInfo(module)->reason, "a user's");
    manager.AddBannedPlugin(module, BanInfo{"", 0, Stamp()});
    EXPECT_EQ(manager.GetBanInfo(module)->stamp, Stamp()) << "given as it is";
    EXPECT_GT(manager.GetBanInfo(module)->time, 1600000000);
}

TEST_F(BannedBuildTest, ASubComponentIsDueWhenEachBanThatCoversItIs)
{
    manager.AddBannedPlugin(part);
    Update();
    EXPECT_TRUE(manager.IsDueAgain(part));
    manager.AddBannedPlugin(module, "a user's");
    EXPECT_FALSE(manager.IsDueAgain(part));
    manager.RemoveBannedPlugin(module);
    EXPECT_FALSE(manager.IsDueAgain(module)) << "a sub-component's ban is not the module's";
}

TEST_F(BannedBuildTest, TheRegistryIsToldWhichBuildIsBannedAndEndsTheBanOfAnother)
{
    BannedPluginManager& list = *BannedPluginManager::GetInstance();
    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
    ResetBannedPlugins(list);
    const auto give = [&] {
        const auto info = std::make_shared<PluginModuleInfo>(module);
        info->SetFileStamp(Stamp().size, Stamp().time);
        registry.AddConfiguration(PluginModuleInfoManager::ToConfigurationText({info}), false);
    };
    list.AddBannedPlugin(module);
    list.AddBannedPlugin(second, "another");
    list.SaveConfiguration(ListFile());
    give();
    EXPECT_TRUE(list.IsBanned(module));
    Update();
    // Banned anew: the ban is told again, though the same locators are banned as before.
    list.AddBannedPlugin(module);
    give();
    EXPECT_TRUE(list.IsBanned(module));
    zettesting::WriteAll(path, "yet another update");
    give();
    EXPECT_FALSE(list.IsBanned(module));
    EXPECT_EQ(registry.PluginInfoEnd() - registry.PluginInfoBegin(), 1);
    list.SaveConfiguration(ListFile());
    EXPECT_THAT(zettesting::ReadAll(ListPath()), Not(HasSubstr("a.vst3")));
    EXPECT_THAT(zettesting::ReadAll(ListPath()), HasSubstr("another"));
    ResetBannedPlugins(list);
}

} // namespace
} // namespace zetaudiopluginhost
