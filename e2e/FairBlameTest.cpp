// Tests which plug-in is banned when plug-ins make each other crash, or crash now and then.
#include <gmock/gmock.h>

#include "ManagerFixture.h"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using Strings = std::vector<std::string>;

class FairBlame : public ManagerFixture
{};

TEST_F(FairBlame, InOrderTheOneThatCrashesOnlyAfterAnotherIsNotBannedAndTheLogNamesBoth)
{
    const auto poisons = Install("bad/poisons_process", "a_poisons");
    const auto crashes = Install("bad/crashes_when_poisoned", "b_crashes");
    EXPECT_EQ(Scan({"--jobs", "1"}).banned, Strings());
    EXPECT_THAT(ListedPaths({"--enabled"}), testing::ElementsAre(poisons.string(), crashes.string()));
    EXPECT_THAT(ScanLogs(), AllOf(HasSubstr("loaded before it in the same process"), HasSubstr("a_poisons"),
                                  HasSubstr("b_crashes"), HasSubstr("passed when it was alone")));
}

TEST_F(FairBlame, OutOfOrderNothingCrashes)
{
    const auto crashes = Install("bad/crashes_when_poisoned", "a_crashes");
    const auto poisons = Install("bad/poisons_process", "b_poisons");
    EXPECT_EQ(Scan().banned, Strings());
    EXPECT_THAT(ListedPaths({"--enabled"}), testing::ElementsAre(crashes.string(), poisons.string()));
    // On a slow machine there are notes of workers that are ended while they rest.
    EXPECT_THAT(ScanLogs(), testing::Not(HasSubstr("It is tried once more")));
}

class Flaky : public FairBlame, public testing::WithParamInterface<const char*>
{};

INSTANTIATE_TEST_SUITE_P(Place, Flaky, testing::Values("a_first", "m_between"),
                         [](const auto& test) { return std::string(test.param); });

TEST_P(Flaky, OneThatCrashesEverySecondTimeIsBannedWithBothOutcomes)
{
    AllowWriting(folder.Path());
    environment["ZET_TEST_PLUGIN_STATE"] = (folder / "odd").string();
    const auto before = Install("good/vst2_effect", "b_effect");
    const auto flaky = Install("bad/crashes_every_second_time", GetParam());
    const auto after = Install("good/vst2_synth", "z_synth");
    EXPECT_EQ(Scan().banned, Strings{flaky.string()});
    EXPECT_THAT(FindListed(flaky)->reason,
                testing::ContainsRegex(
                    "is flaky: it crashed .*; tried alone, it passed; tried once more, it crashed"));
    // The facts are in the file, so that a window can word them in its language.
    EXPECT_THAT(zettesting::ReadAll(prefs / "BannedAudioPlugins.xml"),
                testing::ContainsRegex("<failure kind=.crashed. .*\\n.*<failure kind=.crashed. "));
    EXPECT_EQ(ListedPaths({"--enabled"}), (Strings{before.string(), after.string()}));
}

} // namespace
