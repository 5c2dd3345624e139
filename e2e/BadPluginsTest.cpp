#include <algorithm>
#include <cstdlib>
#include <set>

#include <gmock/gmock.h>

#include <zettesting/Emulation.h>

#include "CrashNames.h"
#include "ManagerFixture.h"

namespace {

using Strings = std::vector<std::string>;

enum class Verdict
{
    Banned,
    /// It is banned, but its code has never run, so that every scan tries it again.
    CouldNotLoad,
    /// It works.
    Found,
    /// It is no plug-in: neither listed nor banned.
    NoPlugin,
    /// It works until it crashes of itself. It may be found or banned; both are right.
    FoundOrBanned,
};

struct Behaviour
{
    std::string name;
    Verdict verdict;
    /// The reason must contain this text.
    std::string reason;

    friend void PrintTo(const Behaviour& behaviour, std::ostream* stream) { *stream << behaviour.name; }
};

/// How long a plug-in may take. Under an emulator the good ones beside it need more time on a busy machine.
std::string SecondsLimit()
{
    return zettesting::IsWine() ? "4" : "1";
}

std::string TookTooLong()
{
    return "took longer than " + (SecondsLimit() == "1" ? "1 second" : SecondsLimit() + " seconds");
}

std::vector<Behaviour> AllBehaviours()
{
    const std::string fault = "crashed (" + MemoryFaultName() + ")";
    // Wine's loader catches crashes in a module's initialisers and last functions.
    const bool caught = zettesting::IsWine();
    return {
        {"crash_on_load", Verdict::Banned, caught ? "could not be loaded" : fault + " while being loaded"},
        {"crash_in_entry", Verdict::Banned, fault + " in its entry function"},
        {"crash_on_open", Verdict::Banned, fault + " while being opened"},
        {"crash_on_start", Verdict::Found, ""},
        {"crash_when_asked_name", Verdict::Banned, fault + " while being asked"},
        {"crash_on_close", Verdict::Banned, fault + " while being closed"},
        {"crash_on_unload", caught ? Verdict::Found : Verdict::Banned, fault + " while being unloaded"},
        {"aborts", Verdict::Banned, "crashed (aborted) in its entry function"},
        {"throws_exception", Verdict::Banned, "exception (the plug-in gave up"},
        {"exits_zero", Verdict::Banned, "ended the process (exit code 0) in its entry function"},
        {"quick_exits_one", Verdict::Banned, "ended the process (exit code 1) in its entry function"},
        {"overflows_stack", Verdict::Banned, "crashed (" + StackOverflowName() + ") in its entry function"},
        {"loops_forever", Verdict::Banned, TookTooLong() + " in its entry function"},
        {"hangs_on_load", Verdict::Banned, TookTooLong() + " while being loaded"},
        {"hangs_in_vst3_factory", Verdict::Banned, TookTooLong() + " in its entry function"},
        {"hangs_when_asked_name", Verdict::Banned, TookTooLong() + " while being asked"},
        {"hangs_on_close", Verdict::Banned, TookTooLong() + " while being closed"},
        {"deadlocks_on_unload", Verdict::Banned, TookTooLong() + " while being unloaded"},
        {"closes_descriptors", Verdict::Banned, "closed files"},
        {"crash_vst3_factory", Verdict::Banned, fault},
        {"installs_crash_handler", Verdict::Banned, "ended the process (exit code 0) in its entry function"},
        {"floods_output", Verdict::Found, ""},
        {"changes_process", Verdict::Found, ""},
        {"poisons_process", Verdict::Found, ""},
        {"crashes_when_poisoned", Verdict::Found, ""},
        {"unterminated_names", Verdict::Found, ""},
        {"invalid_utf8_names", Verdict::Found, ""},
        {"vst3_unterminated_names", Verdict::Found, ""},
        {"leaves_threads", Verdict::FoundOrBanned, ""},
        {"endless_shell", Verdict::Banned, "it is a shell that never ends its list of plug-ins"},
        {"empty_shell", Verdict::Banned, "it is a shell without plug-ins"},
        {"returns_null", Verdict::Banned, "its entry function returned nothing"},
        {"wrong_magic", Verdict::Banned, "its entry function returned something that is no VST plug-in"},
        {"no_entry_point", Verdict::NoPlugin, ""},
        {"vst3_null_factory", Verdict::Banned, "its entry function returned nothing"},
        {"vst3_without_classes", Verdict::Banned, "it has no audio module class"},
        {"missing_library", Verdict::CouldNotLoad, "could not be loaded"},
    };
}

const std::vector<Behaviour>& Behaviours()
{
    static const std::vector<Behaviour> behaviours = AllBehaviours();
    return behaviours;
}

class BadPlugin : public ManagerFixture, public testing::WithParamInterface<Behaviour>
{
  protected:
    BadPlugin()
    {
        good = {Install("good/vst2_effect", "a_effect").string(),
                Install("good/vst2_shell", "b_shell").string(),
                Install("good/vst3_without_moduleinfo", "c_vst3").string(),
                Install("good/vst2_main_entry", "x_main").string(),
                Install("good/vst3_several_classes", "y_classes").string(),
                Install("good/vst2_synth", "z_synth").string()};
        bad = Install("bad/" + GetParam().name, "m_bad");
        // The limit is short only for plug-ins that hang alone. On a busy machine the others need more time.
        const bool hangs = GetParam().reason.starts_with(TookTooLong());
        environment["ZET_DEBUG_DATABASE"] =
            "zetaudiofilterscan.EntityTimeoutSeconds=" + (hangs ? SecondsLimit() : "20");
    }

    bool IsBanned() const
    {
        const auto listed = FindListed(bad);
        return listed && listed->IsBanned();
    }

    Strings good;
    std::filesystem::path bad;
};

std::vector<ListedPlugin> WithoutTimes(std::vector<ListedPlugin> list)
{
    for (ListedPlugin& plugin : list)
        plugin.bannedAt.clear();
    return list;
}

INSTANTIATE_TEST_SUITE_P(Each, BadPlugin, testing::ValuesIn(Behaviours()),
                         [](const auto& test) { return test.param.name; });

TEST_P(BadPlugin, TheHostSurvivesAndTheGoodOnesAreFound)
{
    const ScanSummary summary = Scan();
    EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
    EXPECT_EQ(summary.scanned, static_cast<long long>(good.size()) + 1);
    ExpectNoProcessLeft();

    Strings working, banned;
    for (const ListedPlugin& plugin : List())
        (plugin.IsBanned() ? banned : working).push_back(plugin.path);
    for (const std::string& path : good) {
        EXPECT_THAT(working, testing::Contains(path));
        EXPECT_THAT(banned, testing::Not(testing::Contains(path)));
    }
    EXPECT_EQ(summary.banned, banned);

    const bool isBanned = std::find(banned.begin(), banned.end(), bad.string()) != banned.end();
    const bool isFound = std::find(working.begin(), working.end(), bad.string()) != working.end();
    switch (GetParam().verdict) {
    case Verdict::Banned:
    case Verdict::CouldNotLoad:
        EXPECT_TRUE(isBanned);
        EXPECT_FALSE(isFound);
        break;
    case Verdict::Found:
        EXPECT_FALSE(isBanned);
        EXPECT_TRUE(isFound);
        break;
    case Verdict::NoPlugin:
        EXPECT_FALSE(isBanned);
        EXPECT_FALSE(isFound);
        break;
    case Verdict::FoundOrBanned:
        EXPECT_NE(isBanned, isFound);
        break;
    }
    if (isBanned) {
        const auto listed = FindListed(bad);
        ASSERT_TRUE(listed);
        EXPECT_THAT(listed->reason, testing::HasSubstr(GetParam().reason));
        EXPECT_NE(listed->reason, "");
    }
}

TEST_P(BadPlugin, ASecondScanLeavesItAloneAndAReloadTriesAgain)
{
    Scan();
    const bool wasBanned = IsBanned();
    const bool isTriedAgain = GetParam().verdict == Verdict::CouldNotLoad;
    // A plug-in that was tried again was banned again, at a later time.
    const auto list = isTriedAgain ? WithoutTimes(List()) : List();
    const ScanSummary second = Scan();
    EXPECT_EQ(second.exitStatus, 0) << second.messages;
    if (!isTriedAgain) {
        EXPECT_EQ(second.scanned, 0);
        EXPECT_EQ(second.banned, Strings());
    }
    EXPECT_EQ(isTriedAgain ? WithoutTimes(List()) : List(), list);

    const zettesting::ChildResult reload = Run({"reload", bad.string()});
    if (!wasBanned) {
        EXPECT_EQ(reload.exitStatus, 2);
        return;
    }
    EXPECT_EQ(reload.exitStatus, 0) << reload.error;
    if (GetParam().verdict == Verdict::Banned || isTriedAgain) {
        EXPECT_THAT(reload.output, testing::HasSubstr("1 banned"));
        EXPECT_THAT(reload.output, testing::HasSubstr(GetParam().reason));
        EXPECT_TRUE(IsBanned());
    }
    EXPECT_THAT(ListedPaths({"--enabled"}), testing::IsSupersetOf(good));
}

/// These do not end the process that loads them, so that they can be scanned in the host's own.
class BadPluginInProcess : public BadPlugin
{};

INSTANTIATE_TEST_SUITE_P(
    Each, BadPluginInProcess,
    testing::Values(Behaviour{"throws_exception", Verdict::Banned, "the plug-in gave up"},
                    Behaviour{"floods_output", Verdict::Found, ""},
                    Behaviour{"changes_process", Verdict::Found, ""},
                    Behaviour{"poisons_process", Verdict::Found, ""},
                    Behaviour{"unterminated_names", Verdict::Found, ""},
                    Behaviour{"invalid_utf8_names", Verdict::Found, ""},
                    Behaviour{"vst3_unterminated_names", Verdict::Found, ""},
                    Behaviour{"endless_shell", Verdict::Banned, "never ends its list"},
                    Behaviour{"returns_null", Verdict::Banned, "returned nothing"},
                    Behaviour{"wrong_magic", Verdict::Banned, "no VST plug-in"},
                    Behaviour{"no_entry_point", Verdict::NoPlugin, ""},
                    Behaviour{"vst3_null_factory", Verdict::Banned, "returned nothing"},
                    Behaviour{"vst3_without_classes", Verdict::Banned, "no audio module class"},
                    Behaviour{"missing_library", Verdict::CouldNotLoad, "could not be loaded"}),
    [](const auto& test) { return test.param.name; });

TEST_P(BadPluginInProcess, GivesTheSameAsInTheScanner)
{
    const ScanSummary summary = Scan({"--in-process"});
    EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
    const bool isUnloadable = GetParam().verdict == Verdict::CouldNotLoad;
    const bool mustBeBanned = GetParam().verdict == Verdict::Banned || isUnloadable;
    EXPECT_EQ(summary.banned.size(), mustBeBanned ? 1u : 0u);
    EXPECT_EQ(IsBanned(), mustBeBanned);
    EXPECT_EQ(FindListed(bad).has_value(), GetParam().verdict != Verdict::NoPlugin);
    EXPECT_THAT(ListedPaths({"--enabled"}), testing::IsSupersetOf(good));
    if (IsBanned()) {
        EXPECT_THAT(FindListed(bad)->reason, testing::HasSubstr(GetParam().reason));
        const ScanSummary second = Scan({"--in-process"});
        if (!isUnloadable) {
            EXPECT_EQ(second.scanned, 0);
        }
    }
}

class BadPlugins : public ManagerFixture
{
  protected:
    /// A folder for libraries that plug-ins need.
    void LetTheSystemLookIn(const std::filesystem::path& libraries)
    {
        const bool isWindows = zettesting::ModuleSuffix() == ".dll";
        const char* const variable = isWindows ? "PATH" : "LD_LIBRARY_PATH";
        const char* const before = std::getenv(variable);
        environment[variable] =
            libraries.string() + (before ? (isWindows ? ";" : ":") + std::string(before) : "");
    }
};

TEST_F(BadPlugins, TheTableSaysWhichWereBannedAndWhy)
{
    Install("good/vst2_effect", "good");
    const auto bad = Install("bad/crash_in_entry", "bad");
    const std::string scan = RunWell({"scan"});
    EXPECT_THAT(scan, testing::HasSubstr("Banned: " + bad.string() + "\n    crashed"));
    const std::string table = RunWell({"list"});
    EXPECT_THAT(table, testing::HasSubstr("1 plug-in, 1 banned"));
    EXPECT_THAT(table, testing::HasSubstr(bad.string() + "\n    crashed"));
}

TEST_F(BadPlugins, OutputOfPluginsGoesToTheScanLogsOnly)
{
    Install("bad/floods_output", "flood");
    const auto result = Run({"scan", "--json"});
    EXPECT_EQ(result.output.find("~~~~"), std::string::npos);
    EXPECT_EQ(result.error.find("~~~~"), std::string::npos);
    EXPECT_TRUE(std::filesystem::is_directory(prefs / "scan-logs"));
    EXPECT_FALSE(std::filesystem::is_empty(prefs / "scan-logs"));
}

TEST_F(BadPlugins, AnUnsupportedPluginIsNotLoaded)
{
    const auto bad = Install("bad/crash_on_load", "Unsupported");
    const auto good = Install("good/vst2_effect", "good");
    zettesting::WriteAll(prefs / "UnsupportedAudioPlugins.xml", "<pluginlist><plugin filename=\"unSUPPORTED" +
                                                                    std::string(zettesting::ModuleSuffix()) +
                                                                    "\"/></pluginlist>");
    for (const Strings& arguments : {Strings{"--rescan"}, Strings{"--rescan", "--in-process"}}) {
        const ScanSummary summary = Scan(arguments);
        EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
        EXPECT_EQ(summary.banned, Strings());
        EXPECT_EQ(ListedPaths(), Strings{good.string()});
    }
}

TEST_F(BadPlugins, APoisonedProcessDoesNotGetTheNextPluginBanned)
{
    Install("bad/poisons_process", "a_poison");
    const auto sensitive = Install("bad/crashes_when_poisoned", "b_sensitive");
    const ScanSummary summary = Scan();
    EXPECT_EQ(summary.exitStatus, 0);
    EXPECT_EQ(summary.banned, Strings());
    EXPECT_EQ(summary.found, 2);
    const auto listed = FindListed(sensitive);
    ASSERT_TRUE(listed);
    EXPECT_FALSE(listed->IsBanned());
}

TEST_F(BadPlugins, OneThatCouldNotBeLoadedWorksOnceTheSystemFindsWhatItLacked)
{
    const auto plugin = Install("bad/missing_library", "lacking");
    EXPECT_EQ(Scan().banned, Strings{plugin.string()});
    // Windows does not say which library it has not found.
    const bool systemNamesIt = zettesting::ModuleSuffix() != ".dll";
    EXPECT_THAT(FindListed(plugin)->reason,
                testing::AllOf(testing::HasSubstr("could not be loaded"),
                               testing::HasSubstr(systemNamesIt ? "zet_not_found" : ": ")));
    LetTheSystemLookIn(zettesting::TestPluginsFolder() / "not_found");
    const ScanSummary summary = Scan();
    EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
    EXPECT_EQ(summary.scanned, 1);
    EXPECT_EQ(ListedPaths({"--enabled"}), Strings{plugin.string()});
    EXPECT_EQ(ListedPaths({"--banned"}), Strings());
    EXPECT_EQ(Scan().scanned, 0);
}

TEST_F(BadPlugins, ANewBuildOfABannedOneIsTriedByTheNextScan)
{
    const auto plugin = Install("bad/crash_in_entry", "plugin");
    EXPECT_EQ(Scan().banned, Strings{plugin.string()});
    EXPECT_EQ(Scan().scanned, 0);
    std::filesystem::remove(plugin);
    ASSERT_EQ(Install("good/vst2_effect", "plugin"), plugin);
    const ScanSummary summary = Scan();
    EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
    EXPECT_EQ(summary.scanned, 1);
    EXPECT_EQ(ListedPaths({"--enabled"}), Strings{plugin.string()});
    EXPECT_EQ(ListedPaths({"--banned"}), Strings());
}

TEST_F(BadPlugins, AllOfThemAtOnceLeaveTheGoodOnes)
{
    Strings good;
    for (const auto& behaviour : Behaviours()) {
        const std::string number = std::to_string(100 + (&behaviour - Behaviours().data()));
        Install("bad/" + behaviour.name, number + "_bad");
        good.push_back(Install("good/vst2_effect", number + "_good").string());
    }
    environment["ZET_DEBUG_DATABASE"] = "zetaudiofilterscan.EntityTimeoutSeconds=" + SecondsLimit();
    const ScanSummary summary = Scan();
    EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
    EXPECT_EQ(summary.scanned, static_cast<long long>(2 * Behaviours().size()));
    const Strings working = ListedPaths({"--enabled"});
    for (const std::string& path : good)
        EXPECT_THAT(working, testing::Contains(path));
    const auto mustBeBanned = std::count_if(Behaviours().begin(), Behaviours().end(),
                                            [](const auto& each) { return each.verdict == Verdict::Banned; });
    EXPECT_GE(static_cast<std::ptrdiff_t>(summary.banned.size()), mustBeBanned);
    for (const std::string& path : summary.banned)
        EXPECT_TRUE(path.ends_with("_bad" + std::string(zettesting::ModuleSuffix())) ||
                    path.ends_with("_bad.vst3"))
            << path;
}

} // namespace
