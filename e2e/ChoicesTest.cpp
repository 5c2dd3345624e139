#include <gmock/gmock.h>

#include "ManagerFixture.h"

namespace {

using testing::HasSubstr;
using Strings = std::vector<std::string>;

class Choices : public ManagerFixture
{
  protected:
    Choices()
        : effect(Install("good/vst2_effect", "effect")), shell(Install("good/vst2_shell", "shell")),
          bundle(Install("good/vst3_without_moduleinfo", "bundle"))
    {}

    std::filesystem::path effect, shell, bundle;
};

TEST_F(Choices, DisabledPluginsStayDisabledThroughARescan)
{
    RunWell({"scan"});
    RunWell({"disable", effect.string(), shell.string()});
    const Strings disabled{effect.string(), shell.string()};
    EXPECT_EQ(ListedPaths({"--disabled"}), disabled);
    EXPECT_EQ(List({"--disabled"}).size(), 4u);
    RunWell({"scan", "--rescan"});
    EXPECT_EQ(ListedPaths({"--disabled"}), disabled);
    RunWell({"scan", "--rescan", "--in-process"});
    EXPECT_EQ(ListedPaths({"--disabled"}), disabled);
    RunWell({"enable", effect.string()});
    EXPECT_EQ(ListedPaths({"--disabled"}), Strings{shell.string()});
    RunWell({"disable", "--all"});
    EXPECT_EQ(List({"--enabled"}).size(), 0u);
    RunWell({"enable", "--all"});
    EXPECT_EQ(List({"--disabled"}).size(), 0u);
}

TEST_F(Choices, ADisabledPluginThatWasAwayComesBackDisabled)
{
    RunWell({"scan"});
    RunWell({"disable", effect.string()});
    std::filesystem::rename(effect, folder / "aside");
    RunWell({"scan"});
    EXPECT_THAT(ListedPaths(), testing::Not(testing::Contains(effect.string())));
    std::filesystem::rename(folder / "aside", effect);
    RunWell({"scan"});
    EXPECT_EQ(ListedPaths({"--disabled"}), Strings{effect.string()});
}

TEST_F(Choices, VanishedPluginsLeaveTheList)
{
    RunWell({"scan"});
    std::filesystem::remove(effect);
    std::filesystem::remove_all(bundle);
    EXPECT_THAT(RunWell({"scan"}), HasSubstr("2 gone"));
    EXPECT_EQ(ListedPaths(), Strings{shell.string()});
}

TEST_F(Choices, PluginsOfARemovedFolderLeaveTheListWithTheNextScan)
{
    RunWell({"scan"});
    RunWell({"folders", "remove", plugins.string()});
    RunWell({"scan"});
    EXPECT_EQ(List().size(), 0u);
}

TEST_F(Choices, PluginsOfAFolderThatIsOfflineStay)
{
    RunWell({"scan"});
    const auto list = List();
    std::filesystem::rename(plugins, folder / "unplugged");
    RunWell({"scan"});
    EXPECT_EQ(List(), list);
}

TEST_F(Choices, ABannedPluginStaysBannedUntilItIsReloaded)
{
    RunWell({"scan"});
    RunWell({"ban", bundle.string()});
    auto listed = FindListed(bundle);
    ASSERT_TRUE(listed);
    EXPECT_TRUE(listed->IsBanned());
    EXPECT_EQ(listed->reason, "banned by the user");
    EXPECT_EQ(listed->name, bundle.filename().string());
    EXPECT_EQ(ListedPaths({"--banned"}), Strings{bundle.string()});
    RunWell({"scan", "--rescan"});
    RunWell({"scan", "--rescan", "--in-process"});
    EXPECT_EQ(ListedPaths({"--banned"}), Strings{bundle.string()});
    EXPECT_EQ(Scan({bundle.string()}).found, 0);

    EXPECT_THAT(RunWell({"reload", bundle.string()}), HasSubstr("1 plug-in found"));
    listed = FindListed(bundle);
    ASSERT_TRUE(listed);
    EXPECT_EQ(listed->status, "working");
    EXPECT_EQ(listed->name, "Tidal Comp");
}

TEST_F(Choices, ReloadingABannedPluginWhoseFileIsGoneRemovesItFromBothLists)
{
    RunWell({"scan"});
    RunWell({"ban", effect.string()});
    std::filesystem::remove(effect);
    RunWell({"reload", effect.string()});
    EXPECT_FALSE(FindListed(effect));
    EXPECT_EQ(ListedPaths().size(), 2u);
}

TEST_F(Choices, GivenFilesAreScannedAndNothingElse)
{
    const ScanSummary summary = Scan({effect.string()});
    EXPECT_EQ(summary.scanned, 1);
    EXPECT_EQ(summary.found, 1);
    EXPECT_EQ(ListedPaths(), Strings{effect.string()});
    EXPECT_EQ(Scan().scanned, 2);
}

TEST_F(Choices, FilesMayBeNamedRelativeToTheCurrentFolder)
{
    const auto relative = std::filesystem::path("plugins") / effect.filename();
    EXPECT_EQ(Scan({relative.string()}).found, 1);
    RunWell({"disable", (std::filesystem::path(".") / relative).string()});
    EXPECT_EQ(ListedPaths({"--disabled"}), Strings{effect.string()});
    EXPECT_EQ(Scan({"plugins/bundle.vst3/"}).found, 1);
}

TEST_F(Choices, TheFilterLooksAtNamePathAndVersion)
{
    RunWell({"scan"});
    EXPECT_EQ(ListedPaths({"--filter", "PEBBLE"}), Strings{effect.string()});
    EXPECT_EQ(ListedPaths({"--filter", "bundle.vst3"}), Strings{bundle.string()});
    EXPECT_EQ(ListedPaths({"--filter", "2.0.0.17"}), Strings{bundle.string()});
    EXPECT_EQ(ListedPaths({"--filter", "no such thing"}), Strings());
}

TEST_F(Choices, FoldersCanBeAddedRemovedAndReset)
{
    const std::string line = "VST   " + plugins.string() + "\nVST3  " + plugins.string() + "\n";
    EXPECT_EQ(RunWell({"folders"}), line);
    EXPECT_EQ(RunWell({"folders", "list"}), line);
    RunWell({"folders", "add", plugins.string() + "/", "plugins/."});
    EXPECT_EQ(RunWell({"folders"}), line) << "a folder is kept once";
    const auto missing = Run({"folders", "add", "not there"});
    EXPECT_EQ(missing.exitStatus, 0);
    EXPECT_THAT(missing.error, HasSubstr((folder / "not there").string()));
    EXPECT_THAT(RunWell({"folders"}), HasSubstr("VST   " + (folder / "not there").string() + "\n"));
    RunWell({"folders", "remove", "plugins", "not there"});
    EXPECT_EQ(RunWell({"folders"}), "");
    RunWell({"folders", "reset"});
    EXPECT_THAT(RunWell({"folders"}), HasSubstr((folder / "home").string()));
    EXPECT_THAT(RunWell({"folders"}), HasSubstr("VST3  "));
    RunWell({"folders", "add", "plugins"});
    RunWell({"folders", "reset"});
    EXPECT_THAT(RunWell({"folders"}), ::testing::Not(HasSubstr(plugins.string()))) << "of every technology";
}

TEST_F(Choices, TheFirstStartSavesTheDefaultFolders)
{
    prefs = folder / "new" / "prefs";
    environment["VST_PATH"] = (folder / "my vst").string();
    EXPECT_THAT(RunWell({"folders"}), HasSubstr("VST   " + (folder / "my vst").string() + "\n"));
    EXPECT_FALSE(std::filesystem::is_empty(prefs));
    environment["VST_PATH"] = std::nullopt;
    EXPECT_THAT(RunWell({"folders"}), HasSubstr((folder / "my vst").string()));
}

TEST_F(Choices, WithoutAPreferencesFolderTheClientsIsUsed)
{
    auto command = Command({"list", "--json"});
    command.arguments = {"--client", "Some Host", "list", "--json"};
    const auto result = zettesting::ChildProcess::Run(command);
    EXPECT_EQ(result.exitStatus, 0) << result.error;
    EXPECT_EQ(result.output, "[]\n");
    EXPECT_TRUE(std::filesystem::is_directory(folder / "home" / "config" / "Some Host"));
}

} // namespace
