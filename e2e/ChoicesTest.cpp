#include <algorithm>

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

/// Replaces every digit by '9', so that texts with different numbers can be compared.
std::string WithNines(std::string text)
{
    std::replace_if(
        text.begin(), text.end(), [](char character) { return character >= '0' && character <= '9'; }, '9');
    return text;
}

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
    const std::string line =
        "VST   " + plugins.string() + "\nVST3  " + plugins.string() + "\nCLAP  " + plugins.string() + "\n";
    EXPECT_EQ(RunWell({"folders"}), line);
    EXPECT_EQ(RunWell({"folders", "list"}), line);
    RunWell({"folders", "add", plugins.string() + "/", "plugins/."});
    EXPECT_EQ(RunWell({"folders"}), line) << "a folder is kept once";
    RunWell({"folders", "add", "--offline", "not there"});
    EXPECT_THAT(RunWell({"folders"}), HasSubstr("VST   " + (folder / "not there").string() + "\n"));
    EXPECT_EQ(Run({"folders"}).error, "zetaudiopluginmanager: scans pass these folders over:\n"
                                      "zetaudiopluginmanager:   " +
                                          (folder / "not there").string() + " (not there)\n");
    EXPECT_EQ(Run({"--quiet", "folders"}).error, "");
    RunWell({"folders", "remove", "not there"});
    EXPECT_EQ(Run({"folders"}).error, "");
    RunWell({"folders", "remove", "plugins"});
    EXPECT_EQ(RunWell({"folders"}), "");
    RunWell({"folders", "reset"});
    EXPECT_THAT(RunWell({"folders"}), HasSubstr((folder / "home").string()));
    EXPECT_THAT(RunWell({"folders"}), HasSubstr("VST3  "));
    RunWell({"folders", "add", "plugins"});
    RunWell({"folders", "reset"});
    EXPECT_THAT(RunWell({"folders"}), ::testing::Not(HasSubstr(plugins.string()))) << "of every technology";
}

TEST_F(Choices, WhatIsNoFolderIsNotAddedAndNeitherAreTheOthers)
{
    const std::string before = RunWell({"folders"});
    std::filesystem::create_directory(folder / "more");
    struct Case
    {
        Strings arguments;
        std::string named, why;
    };
    for (const Case& each : {Case{{"more", effect.string()}, effect.string(), "no folder"},
                             Case{{"--offline", effect.string()}, effect.string(), "no folder"},
                             Case{{"not there", "more"}, (folder / "not there").string(), "--offline"}}) {
        Strings arguments{"folders", "add"};
        arguments.insert(arguments.end(), each.arguments.begin(), each.arguments.end());
        const auto result = Run(arguments);
        EXPECT_EQ(result.exitStatus, 2) << testing::PrintToString(arguments);
        EXPECT_THAT(result.error, AllOf(HasSubstr(each.named), HasSubstr(each.why)));
    }
    EXPECT_EQ(RunWell({"folders"}), before);
}

TEST_F(Choices, AFolderThatIsNamedIsScannedWithAllThatLiesInIt)
{
    const auto elsewhere = folder / "elsewhere";
    std::filesystem::create_directories(elsewhere / "deep");
    const auto synth = zettesting::CopyTestPlugin("good/vst2_synth", elsewhere / "deep", "synth");
    const auto vst3 = zettesting::CopyTestPlugin("good/vst3_without_moduleinfo", elsewhere, "other");
    const ScanSummary summary = Scan({"elsewhere"});
    EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
    EXPECT_EQ(summary.found, 2);
    EXPECT_EQ(ListedPaths(), (Strings{synth.string(), vst3.string()})) << "and nothing else";
    EXPECT_EQ(Scan({elsewhere.string(), "--in-process"}).scanned, 2) << "known ones too";

    RunWell({"ban", vst3.string()});
    const ScanSummary again = Scan({elsewhere.string(), effect.string()});
    EXPECT_EQ(again.found, 2);
    EXPECT_THAT(again.messages,
                HasSubstr("banned, and therefore not scanned ('reload' scans it): " + vst3.string()));
    EXPECT_EQ(Scan({bundle.string()}).found, 1) << "a bundle is a plug-in and no folder of plug-ins";
}

TEST_F(Choices, AFolderWithoutPluginsIsSaid)
{
    std::filesystem::create_directory(folder / "empty");
    zettesting::WriteAll(folder / "empty" / "readme.txt", "nothing");
    const ScanSummary summary = Scan({"empty"});
    EXPECT_EQ(summary.exitStatus, 0);
    EXPECT_EQ(summary.scanned, 0);
    EXPECT_THAT(summary.messages, HasSubstr((folder / "empty").string()));
}

TEST_F(Choices, AllBannedPluginsAreReloadedAtOnce)
{
    RunWell({"scan"});
    RunWell({"ban", effect.string(), shell.string(), bundle.string()});
    std::filesystem::remove(shell);
    EXPECT_THAT(RunWell({"reload", "--all"}), AllOf(HasSubstr("2 plug-ins found"), HasSubstr("1 gone")));
    EXPECT_EQ(ListedPaths({"--banned"}), Strings());
    EXPECT_EQ(ListedPaths({"--enabled"}), (Strings{bundle.string(), effect.string()}));
    const auto nothing = Run({"reload", "--all"});
    EXPECT_EQ(nothing.exitStatus, 0);
    EXPECT_THAT(nothing.error, HasSubstr("no plug-in is banned"));
}

TEST_F(Choices, EachChoiceOfTheListCountsWhatItShows)
{
    RunWell({"scan"});
    RunWell({"disable", effect.string()});
    RunWell({"ban", bundle.string()});
    EXPECT_THAT(RunWell({"list"}), HasSubstr("\n4 plug-ins (1 off), 1 banned\n"));
    EXPECT_THAT(RunWell({"list", "--banned"}), HasSubstr("\n1 banned plug-in\n"));
    EXPECT_THAT(RunWell({"list", "--enabled"}), HasSubstr("\n3 plug-ins on\n"));
    EXPECT_THAT(RunWell({"list", "--disabled"}), HasSubstr("\n1 plug-in off\n"));
    EXPECT_THAT(RunWell({"list", "--failed"}),
                AllOf(HasSubstr("\n1 plug-in does not work, 1 of them banned\n"),
                      HasSubstr("    banned by the user\n")));
}

TEST_F(Choices, TheListInJsonHasEverythingThatIsKnown)
{
    RunWell({"scan"});
    RunWell({"ban", effect.string()});
    const auto listed = FindListed(bundle);
    ASSERT_TRUE(listed);
    EXPECT_EQ(listed->id.size(), 32u);
    EXPECT_NE(listed->category, "");
    const testing::Matcher<std::string> isTime =
        testing::AllOf(testing::StartsWith("20"), testing::ResultOf(WithNines, "9999-99-99T99:99:99Z"));
    EXPECT_THAT(listed->fileTime, isTime);
    EXPECT_TRUE(listed->effect);
    EXPECT_FALSE(listed->instrument);
    const auto banned = FindListed(effect);
    ASSERT_TRUE(banned);
    EXPECT_THAT(banned->bannedAt, isTime);
    const auto synth = Install("good/vst2_synth", "synth");
    RunWell({"scan"});
    ASSERT_TRUE(FindListed(synth));
    EXPECT_TRUE(FindListed(synth)->instrument);
}

TEST_F(Choices, AListOfPreferencesThatAreNotThereSaysSoAndMakesNothing)
{
    prefs = folder / "mistyped" / "prefs";
    for (const Strings& arguments : {Strings{"list"}, Strings{"list", "--json"}}) {
        const auto result = Run(arguments);
        EXPECT_EQ(result.exitStatus, 2);
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(result.error, HasSubstr(prefs.string()));
    }
    EXPECT_FALSE(std::filesystem::exists(prefs.parent_path()));
}

TEST_F(Choices, QuietSaysOnlyWhatWentWrong)
{
    const auto good = Run({"scan", "--quiet"});
    EXPECT_EQ(good.exitStatus, 0);
    EXPECT_EQ(good.output + good.error, "");
    EXPECT_EQ(List().size(), 5u);
    const auto bad = Install("bad/crash_in_entry", "bad");
    const auto result = Run({"--quiet", "scan"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_THAT(result.output, testing::StartsWith("Banned: " + bad.string() + "\n"));
    EXPECT_EQ(result.error, "");
    EXPECT_NE(Run({"list", "--quiet"}).output, "") << "a list is what was asked for";
    EXPECT_NE(Run({"scan", "--quiet", "no such file"}).error, "");
}

TEST_F(Choices, TheTimeThatAPluginMayTakeIsChosen)
{
    const auto hanging = Install("bad/loops_forever", "hanging");
    environment["ZET_DEBUG_DATABASE"] = "zetaudiofilterscan.EntityTimeoutSeconds=500;Other=1";
    const ScanSummary summary = Scan({"--timeout", "0.5", hanging.string()});
    EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
    const auto listed = FindListed(hanging);
    ASSERT_TRUE(listed);
    EXPECT_TRUE(listed->IsBanned());
    EXPECT_THAT(listed->reason, HasSubstr("took longer than 0.5"));
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
