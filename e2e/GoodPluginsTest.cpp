#include <algorithm>
#include <map>
#include <set>

#include <gmock/gmock.h>

#include "ManagerFixture.h"

namespace {

using testing::HasSubstr;
using testing::Not;
using Strings = std::vector<std::string>;

/// The facts that a scan must tell of one plug-in. Versions are compared elsewhere, because technologies
/// write them differently.
using Facts = std::tuple<std::string, std::string, std::string>;

class GoodPlugins : public ManagerFixture, public testing::WithParamInterface<bool>
{
  protected:
    GoodPlugins() { std::filesystem::copy(zettesting::TestPluginsFolder() / "good", plugins, recursively); }

    Strings ScanArguments() const { return GetParam() ? Strings{"--in-process"} : Strings{}; }

    /// A scan must find a record for each module, and one for each plug-in of a VST2 shell. A VST3 module
    /// with several classes has the name of its file.
    std::multiset<Facts> ExpectedFacts() const
    {
        std::map<std::string, std::vector<zettesting::TestPluginFacts>> modules;
        for (const auto& fact : zettesting::GoodTestPluginFacts())
            modules[fact.plugin].push_back(fact);
        std::multiset<Facts> expected;
        for (const auto& [name, facts] : modules) {
            const auto path = plugins / zettesting::TestPlugin(name).filename();
            if (facts.size() > 1 && !facts.front().inShell) {
                expected.emplace(path.string(), path.stem().string(), facts.front().vendor);
                continue;
            }
            for (const auto& fact : facts)
                expected.emplace(path.string(), fact.name, fact.vendor);
        }
        return expected;
    }

    static constexpr auto recursively = std::filesystem::copy_options::recursive;
};

INSTANTIATE_TEST_SUITE_P(BothWays, GoodPlugins, testing::Bool(),
                         [](const auto& test) { return test.param ? "InProcess" : "Externally"; });

TEST_P(GoodPlugins, AllAreFoundWithTheirNamesAndVendors)
{
    const ScanSummary summary = Scan(ScanArguments());
    EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
    EXPECT_EQ(summary.banned, Strings());
    EXPECT_GE(summary.seconds, 0);

    std::multiset<Facts> found;
    const auto list = List();
    for (const ListedPlugin& plugin : list) {
        found.emplace(plugin.path, plugin.name, plugin.vendor);
        EXPECT_EQ(plugin.status, "working");
        EXPECT_TRUE(plugin.enabled);
        EXPECT_EQ(plugin.technology, plugin.path.ends_with(".vst3")   ? "VST3"
                                     : plugin.path.ends_with(".clap") ? "CLAP"
                                                                      : "VST");
    }
    EXPECT_EQ(found, ExpectedFacts());
    EXPECT_EQ(summary.found, static_cast<long long>(list.size()));
    EXPECT_EQ(summary.scanned, static_cast<long long>(ListedPaths().size()));
}

// Only an instance of a shell's plug-in tells its kind, and only the full scan makes instances.
TEST_P(GoodPlugins, InstrumentsAreNoEffects)
{
    for (const bool quick : {true, false}) {
        environment["ZET_DEBUG_DATABASE"] =
            std::string("zetaudiofilterhost.EnableQuickEffectScan=") + (quick ? "true" : "false");
        Strings arguments = ScanArguments();
        arguments.push_back("--rescan");
        Scan(arguments);
        std::map<std::string, bool> effects;
        for (const ListedPlugin& plugin : List())
            effects[plugin.name] = plugin.effect;
        for (const auto& fact : zettesting::GoodTestPluginFacts()) {
            const bool known = !fact.inShell || !quick;
            if (known && fact.plugin != "good/vst3_several_classes") {
                ASSERT_TRUE(effects.contains(fact.name)) << fact.name;
                EXPECT_EQ(effects[fact.name], !fact.synth) << fact.name;
            }
        }
        EXPECT_TRUE(effects["vst3_several_classes"]) << "it holds effects beside its instruments";
    }
}

TEST_P(GoodPlugins, AShellGivesARecordForEachThatItHolds)
{
    Scan(ScanArguments());
    std::set<std::string> names, subcomponents;
    for (const ListedPlugin& plugin : List({"--filter", "vst2_shell"})) {
        names.insert(plugin.name);
        subcomponents.insert(plugin.subcomponent);
    }
    EXPECT_EQ(names, (std::set<std::string>{"Quarry Gate", "Quarry Mono", "Quarry Tilt"}));
    EXPECT_EQ(subcomponents.size(), 3u);
    EXPECT_FALSE(subcomponents.contains(""));
}

TEST_P(GoodPlugins, ASecondScanFindsNothingToDoAndARescanTheSame)
{
    const ScanSummary first = Scan(ScanArguments());
    const auto list = List();
    const ScanSummary second = Scan(ScanArguments());
    EXPECT_EQ(second.exitStatus, 0);
    EXPECT_EQ(second.scanned, 0);
    EXPECT_EQ(second.found, 0);
    EXPECT_EQ(List(), list);

    Strings arguments = ScanArguments();
    arguments.push_back("--rescan");
    const ScanSummary third = Scan(arguments);
    EXPECT_EQ(third.scanned, first.scanned);
    EXPECT_EQ(third.found, first.found);
    EXPECT_EQ(List(), list);
}

TEST_P(GoodPlugins, NoMarkerAndNoResultFileAreLeft)
{
    Scan(ScanArguments());
    for (const auto& entry : std::filesystem::directory_iterator(prefs)) {
        EXPECT_NE(entry.path().filename(), "ScannedPluginPath.txt");
        EXPECT_NE(entry.path().extension(), ".scan");
    }
}

TEST_P(GoodPlugins, BothWaysOfScanningFindTheSame)
{
    Scan(ScanArguments());
    const auto oneWay = List();
    Scan(GetParam() ? Strings{"--rescan"} : Strings{"--rescan", "--in-process"});
    EXPECT_EQ(List(), oneWay);
}

TEST_P(GoodPlugins, WithoutJsonTheScanPrintsASummaryAndTheListATable)
{
    Strings arguments = ScanArguments();
    arguments.insert(arguments.begin(), "scan");
    EXPECT_THAT(RunWell(arguments),
                testing::ContainsRegex("^14 plug-in files scanned in .* 17 plug-ins found, 0 banned"));
    const std::string table = RunWell({"list"});
    for (const auto& [path, name, vendor] : ExpectedFacts())
        EXPECT_THAT(table, AllOf(HasSubstr(path), HasSubstr(name), HasSubstr(vendor)));
    EXPECT_THAT(table, Not(HasSubstr("\x1b")));
    EXPECT_THAT(table, HasSubstr("17 plug-ins, 0 banned"));
}

} // namespace
