// Kills the host at every step of a scan in its own process.
#include <algorithm>
#include <cctype>

#include <gmock/gmock.h>

#include "FaultFixture.h"

namespace {

using Strings = std::vector<std::string>;
using zettesting::ChildProcess;

struct Place
{
    const char* name;
    unsigned visit;

    friend void PrintTo(const Place& place, std::ostream* stream)
    {
        *stream << place.name << ", visit " << place.visit;
    }
};

std::string NameOf(const Place& place)
{
    std::string name = std::string(place.name) + "_" + std::to_string(place.visit) + "_Host";
    std::replace_if(
        name.begin(), name.end(), [](char character) { return !std::isalnum(character); }, '_');
    return name;
}

/// The next start bans the plug-in that the marker names, because nobody can tell a kill from a crash.
/// Nothing else is lost.
class FaultMatrixInProcess : public FaultFixture, public testing::WithParamInterface<Place>
{};

INSTANTIATE_TEST_SUITE_P(
    Steps, FaultMatrixInProcess,
    testing::Values(Place{"host.scan-begins", 1}, Place{"write.ScannedPluginPath.txt.write", 1},
                    Place{"write.ScannedPluginPath.txt.rename", 2},
                    Place{"write.ScannedPluginPath.txt.done", 2}, Place{"write.AudioPlugins.xml.rename", 1},
                    Place{"write.AudioPlugins.xml.journal.rename", 1},
                    Place{"append.AudioPlugins.xml.journal.write", 1}, Place{"host.plugin-loading", 2},
                    Place{"host.plugin-scanned", 2}, Place{"host.scan-done", 1},
                    Place{"write.AudioPlugins.xml.rename", 2}, Place{"write.AudioPlugins.xml.done", 2}),
    [](const auto& test) { return NameOf(test.param); });

TEST_P(FaultMatrixInProcess, NothingIsLost)
{
    const Strings good{
        Install("good/vst2_effect", "a_effect").string(), Install("good/vst2_synth", "b_synth").string(),
        Install("good/vst2_main_entry", "c_main").string(), Install("good/vst2_effect", "d_effect").string()};
    StopAt(GetParam().name, GetParam().visit);
    ChildProcess host(Command({"scan", "--in-process"}));
    const auto stop = WaitForStop();
    ASSERT_TRUE(stop) << "nothing has stopped there: " << host.Wait().error;
    KillAll(Numbers(SeenProcess::Kind::Host));
    EXPECT_NE(host.Wait().signal, 0);
    WithoutFaults();

    const auto marker = prefs / "ScannedPluginPath.txt";
    const std::string marked = std::filesystem::exists(marker) ? zettesting::ReadAll(marker) : "";
    const auto next = Run({"list", "--json"});
    EXPECT_EQ(next.exitStatus, 0) << next.error;
    EXPECT_EQ(DamagedFiles(), Strings());
    Strings known, banned;
    for (const ListedPlugin& plugin : ReadList(next.output))
        (plugin.IsBanned() ? banned : known).push_back(plugin.path);
    if (marked.empty()) {
        EXPECT_EQ(banned, Strings());
    } else {
        ASSERT_EQ(banned.size(), 1u);
        EXPECT_THAT(marked, testing::HasSubstr(banned.front()));
        // The plug-ins before it have been found and saved.
        EXPECT_THAT(known, testing::IsSupersetOf(
                               Strings(good.begin(), std::find(good.begin(), good.end(), banned.front()))));
        RunWell({"reload", banned.front()});
    }
    EXPECT_EQ(Scan({"--in-process"}).exitStatus, 0);
    EXPECT_EQ(ListedPaths({"--enabled"}), good);
}

} // namespace
