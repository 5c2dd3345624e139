#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include <gmock/gmock.h>

#include "ManagerFixture.h"

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using Strings = std::vector<std::string>;

constexpr const char* hallId = "net.fennel-and-flint.cairn-hall";
constexpr const char* organId = "net.fennel-and-flint.cairn-organ";

/// CLAP plug-ins among others: one file with an effect, and one with an effect and an instrument.
class Clap : public ManagerFixture, public testing::WithParamInterface<bool>
{
  protected:
    Clap()
        : effect(Install("good/clap_effect", "effect")), several(Install("good/clap_several", "several")),
          other(Install("good/vst2_effect", "other"))
    {}

    /// The arguments for a scan in the scanner or in the host's own process.
    Strings Ways(Strings arguments = {}) const
    {
        if (GetParam())
            arguments.push_back("--in-process");
        return arguments;
    }
    void MakeFullScans()
    {
        environment["ZET_DEBUG_DATABASE"] = "zetaudiofilterhost.EnableQuickEffectScan=false";
    }
    std::vector<ListedPlugin> ListedOf(const std::filesystem::path& file, Strings arguments = {}) const
    {
        std::vector<ListedPlugin> found = List(std::move(arguments));
        std::erase_if(found, [&file](const ListedPlugin& plugin) { return plugin.path != file.string(); });
        return found;
    }
    Strings EnabledIdsOf(const std::filesystem::path& file) const
    {
        Strings ids;
        for (const ListedPlugin& plugin : ListedOf(file, {"--enabled"}))
            ids.push_back(plugin.subcomponent);
        return ids;
    }

    std::filesystem::path effect, several, other;
};

INSTANTIATE_TEST_SUITE_P(BothWays, Clap, testing::Bool(),
                         [](const auto& test) { return test.param ? "InProcess" : "Externally"; });

TEST_P(Clap, PluginsAreListedWithWhatTheyTell)
{
    for (const bool isFull : {false, true}) {
        if (isFull)
            MakeFullScans();
        const ScanSummary summary = Scan(Ways({"--rescan"}));
        EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
        EXPECT_EQ(summary.scanned, 3);
        EXPECT_EQ(summary.found, 4);

        const auto alone = ListedOf(effect);
        ASSERT_EQ(alone.size(), 1u);
        EXPECT_EQ(alone[0].technology, "CLAP");
        EXPECT_EQ(alone[0].subcomponent, "");
        EXPECT_EQ(alone[0].name, "Reed Delay");
        EXPECT_EQ(alone[0].vendor, "Marrow Lane Audio");
        EXPECT_EQ(alone[0].version, "1.2.0");
        EXPECT_EQ(alone[0].id, "audio.marrowlane.reed-delay");
        EXPECT_EQ(alone[0].category, "audio-effect|delay|stereo");
        EXPECT_TRUE(alone[0].effect && !alone[0].instrument && alone[0].enabled);

        const auto both = ListedOf(several);
        ASSERT_EQ(both.size(), 2u);
        for (const ListedPlugin& plugin : both) {
            EXPECT_EQ(plugin.subcomponent, plugin.id);
            EXPECT_EQ(plugin.technology, "CLAP");
            EXPECT_EQ(plugin.effect, plugin.id == hallId);
            EXPECT_EQ(plugin.instrument, plugin.id == organId);
        }
        EXPECT_EQ(FindListed(other)->technology, "VST");
    }
}

TEST_P(Clap, TheListFiltersAndTheTableShowThem)
{
    RunWell(Ways({"scan"}));
    EXPECT_EQ(ListedPaths({"--filter", "REED"}), Strings{effect.string()});
    EXPECT_EQ(List({"--filter", "several.clap"}).size(), 2u);
    EXPECT_EQ(List({"--filter", "4.0.2"}).size(), 1u);
    EXPECT_THAT(RunWell({"list"}), AllOf(HasSubstr("CLAP"), HasSubstr("Cairn Hall"),
                                         HasSubstr("Cairn Org\xC3\xA3o"), HasSubstr(several.string())));
}

TEST_P(Clap, ASecondScanFindsNothingToDoAndARescanTheSame)
{
    Scan(Ways());
    const auto list = List();
    EXPECT_EQ(Scan(Ways()).scanned, 0);
    EXPECT_EQ(Scan(Ways({"--rescan"})).scanned, 3);
    EXPECT_EQ(List(), list);
}

TEST_P(Clap, AFileIsSwitchedOffWithAllThatItHolds)
{
    RunWell(Ways({"scan"}));
    RunWell({"disable", several.string()});
    EXPECT_EQ(ListedPaths({"--disabled"}), Strings{several.string()});
    EXPECT_EQ(List({"--disabled"}).size(), 2u);
    RunWell(Ways({"scan", "--rescan"}));
    EXPECT_EQ(List({"--disabled"}).size(), 2u);
    RunWell({"enable", several.string()});
    EXPECT_EQ(List({"--disabled"}).size(), 0u);
}

// The command line switches whole files on and off. The manager's list switches single plug-ins, and saves
// this.
TEST_P(Clap, OneOfAFileThatIsSwitchedOffStaysSoThroughRescansAndWhileItIsAway)
{
    RunWell(Ways({"scan"}));
    const auto saved = prefs / "AudioPlugins.xml";
    std::string text = zettesting::ReadAll(saved);
    const std::size_t record = text.find(std::string(hallId) + '"');
    const std::size_t choice = text.find("enabled=\"true\"", record);
    ASSERT_NE(choice, std::string::npos);
    zettesting::WriteAll(saved, text.replace(choice, 14, "enabled=\"false\""));
    EXPECT_EQ(EnabledIdsOf(several), Strings{organId});

    RunWell(Ways({"scan", "--rescan"}));
    EXPECT_EQ(EnabledIdsOf(several), Strings{organId});
    RunWell(Ways({"scan", several.string()}));
    EXPECT_EQ(EnabledIdsOf(several), Strings{organId});
    std::filesystem::rename(several, folder / "aside");
    RunWell(Ways({"scan"}));
    EXPECT_EQ(List().size(), 2u);
    std::filesystem::rename(folder / "aside", several);
    RunWell(Ways({"scan"}));
    EXPECT_EQ(EnabledIdsOf(several), Strings{organId});
    EXPECT_EQ(ListedOf(several).size(), 2u);
}

TEST_P(Clap, AFileCanBeBannedAndReloaded)
{
    RunWell(Ways({"scan"}));
    RunWell({"ban", several.string()});
    const auto listed = FindListed(several);
    ASSERT_TRUE(listed);
    EXPECT_TRUE(listed->IsBanned());
    EXPECT_EQ(listed->technology, "CLAP");
    EXPECT_EQ(listed->reason, "banned by the user");
    RunWell(Ways({"scan", "--rescan"}));
    EXPECT_EQ(ListedPaths({"--banned"}), Strings{several.string()});
    EXPECT_THAT(RunWell({"reload", several.string()}), HasSubstr("2 plug-ins found"));
    EXPECT_EQ(ListedPaths({"--banned"}), Strings());
    EXPECT_EQ(EnabledIdsOf(several).size(), 2u);
}

TEST_P(Clap, OfSeveralTheOnesThatFailInAFullScanAreListedWithTheReason)
{
    const auto some = Install("bad/clap_some_fail", "some");
    MakeFullScans();
    const ScanSummary summary = Scan(Ways());
    EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
    EXPECT_EQ(summary.banned, Strings());
    std::set<std::string> reasons;
    for (const ListedPlugin& plugin : ListedOf(some, {"--failed"}))
        reasons.insert(plugin.name + ": " + plugin.reason);
    EXPECT_THAT(reasons, ElementsAre("Is Not Created: it could not be created",
                                     "Is Not Initialised: it could not be initialised"));
    EXPECT_EQ(EnabledIdsOf(some), Strings{"org.bramble.works"});
}

TEST_P(Clap, OneThatCannotBeCreatedIsBannedByTheFullScanOnly)
{
    const auto bad = Install("bad/clap_create_fails", "bad");
    EXPECT_EQ(Scan(Ways()).banned, Strings());
    EXPECT_FALSE(FindListed(bad)->IsBanned());
    MakeFullScans();
    EXPECT_EQ(Scan(Ways({"--rescan"})).banned, Strings{bad.string()});
    EXPECT_EQ(FindListed(bad)->reason, "it could not be created");
}

TEST_P(Clap, WhatAFileHasLeftOutIsSaid)
{
    const auto bad = Install("bad/clap_null_fields", "bad");
    const ScanSummary summary = Scan(Ways());
    EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
    EXPECT_EQ(summary.banned, Strings());
    EXPECT_EQ(EnabledIdsOf(bad).size(), 2u);
    const auto failed = ListedOf(bad, {"--failed"});
    ASSERT_EQ(failed.size(), 1u);
    EXPECT_EQ(failed[0].reason, "4 of its 6 plug-ins cannot be used: number 1 has no id");
    EXPECT_EQ(Scan(Ways()).scanned, 0);
    EXPECT_THAT(RunWell(Ways({"scan", "--rescan"})), HasSubstr("number 1 has no id"));
    EXPECT_EQ(ListedOf(bad, {"--failed"}), failed);
    EXPECT_EQ(EnabledIdsOf(bad).size(), 2u);
    RunWell({"disable", bad.string()});
    EXPECT_EQ(EnabledIdsOf(bad), Strings());
    EXPECT_EQ(ListedOf(bad, {"--disabled"}).size(), 2u);
}

TEST_P(Clap, TenThousandPluginsOfOneFileAreListed)
{
    const auto many = Install("bad/clap_many_descriptors", "many");
    const ScanSummary summary = Scan(Ways());
    EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
    EXPECT_EQ(summary.found, 10004);
    EXPECT_EQ(ListedOf(many).size(), 10000u);
    std::filesystem::remove(many);
    Scan(Ways());
    EXPECT_EQ(List().size(), 4u);
}

TEST_P(Clap, AFileThatIsNoLibraryIsNoPluginAndAFolderOfThatNameIsSearched)
{
    zettesting::WriteAll(plugins / "text.clap", "not a library");
    std::filesystem::create_directories(plugins / "folder.clap" / "deep");
    std::filesystem::copy(effect, plugins / "folder.clap" / "deep" / "inside.clap");
    const ScanSummary summary = Scan(Ways());
    EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
    EXPECT_EQ(summary.banned, Strings());
    EXPECT_EQ(summary.scanned, 5);
    EXPECT_EQ(ListedPaths(),
              (Strings{effect.string(), (plugins / "folder.clap" / "deep" / "inside.clap").string(),
                       other.string(), several.string()}));
    EXPECT_EQ(Scan(Ways({"plugins/folder.clap"})).scanned, 1);
}

/// Libraries that crash their process or cannot be used, with the reasons that users are told.
class BadClap : public ManagerFixture
{};

TEST_F(BadClap, AllOfThemAtOnceAreBannedWithTheirReasonsAndTheOthersAreFound)
{
    const std::pair<const char*, const char*> behaviours[] = {
        {"clap_crash_in_init", "in its entry function"},
        {"clap_crash_in_factory", "in its entry function"},
        {"clap_crash_in_descriptor", "while being asked what it is"},
        {"clap_throws_exception", "the plug-in lost count"},
        {"clap_unknown_version", "version 0.26.3 of CLAP, which this system does not know"},
        {"clap_no_factory", "it has no plug-in factory"},
        {"clap_refuses_init", "its entry function refused"},
    };
    Strings good, bad;
    std::map<std::string, std::string> reasons;
    for (const auto& [name, reason] : behaviours) {
        bad.push_back(Install(std::string("bad/") + name, std::string(name) + "_bad").string());
        good.push_back(Install("good/clap_several", std::string(name) + "_good").string());
        reasons[bad.back()] = reason;
    }
    std::sort(good.begin(), good.end());
    std::sort(bad.begin(), bad.end());

    const ScanSummary summary = Scan();
    EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
    EXPECT_EQ(ListedPaths({"--enabled"}), good);
    EXPECT_EQ(ListedPaths({"--banned"}), bad);
    for (const ListedPlugin& plugin : List({"--banned"})) {
        EXPECT_EQ(plugin.technology, "CLAP");
        EXPECT_THAT(plugin.reason, HasSubstr(reasons[plugin.path]));
    }
    EXPECT_EQ(Scan().scanned, 0);
}

TEST_F(BadClap, FoldersOfTheFormatAreTheDocumentedOnesBehindThoseOfItsVariable)
{
    const bool isWindows = zettesting::ModuleSuffix() == ".dll";
    const auto mine = folder / "my clap", more = folder / "more";
    environment["CLAP_PATH"] = mine.string() + (isWindows ? ";" : ":") + more.string();
    RunWell({"folders", "reset"});
    Strings folders;
    std::istringstream lines(RunWell({"folders"}));
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("CLAP  "))
            folders.push_back(line.substr(6));
    }
    // The system itself sets this variable for every process.
    const char* const common = std::getenv("CommonProgramFiles");
    const Strings documented =
        isWindows ? Strings{(std::filesystem::path(common ? common : "") / "CLAP").string(),
                            (folder / "home" / "local" / "Programs" / "Common" / "CLAP").string()}
                  : Strings{(folder / "home" / ".clap").string(), "/usr/lib/clap"};
    ASSERT_EQ(folders.size(), 4u);
    EXPECT_EQ(folders[0], mine.string());
    EXPECT_EQ(folders[1], more.string());
    EXPECT_EQ(folders[2], documented[0]);
    EXPECT_EQ(folders[3], documented[1]);
}

} // namespace
