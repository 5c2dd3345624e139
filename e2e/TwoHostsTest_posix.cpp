// Two hosts with the same preferences folder. ExitStatusTest shows that hosts with different folders do not
// disturb each other.
#include <gmock/gmock.h>

#include "FaultFixture.h"

namespace {

using Strings = std::vector<std::string>;
using zettesting::ChildProcess;

class TwoHosts : public FaultFixture
{
  protected:
    ScanSummary ScanInBetween(const Strings& arguments)
    {
        WithoutFaults();
        return Scan(arguments);
    }
};

TEST_F(TwoHosts, TheSecondSaveKeepsWhatTheFirstOneFound)
{
    const auto first = Install("good/vst2_effect", "a_effect").string();
    const auto second = Install("good/vst2_synth", "b_synth").string();
    const auto bad = Install("bad/crash_in_entry", "c_bad").string();
    StopAt("host.scan-done", 1);
    ChildProcess one(Command({"scan", "--json", first}));
    const auto stop = WaitForStop();
    ASSERT_TRUE(stop);
    EXPECT_EQ(ScanInBetween({second, bad}).exitStatus, 0);
    EXPECT_EQ(ListedPaths({"--enabled"}), (Strings{first, second}));
    Continue(*stop);
    EXPECT_EQ(ReadScanSummary(one.Wait()).exitStatus, 0);
    EXPECT_EQ(ListedPaths({"--enabled"}), (Strings{first, second}));
    EXPECT_EQ(ListedPaths({"--banned"}), Strings{bad});
}

TEST_F(TwoHosts, AChoiceMadeInBetweenIsNotUndone)
{
    const auto first = Install("good/vst2_effect", "a_effect").string();
    const auto second = Install("good/vst2_synth", "b_synth").string();
    RunWell({"scan"});
    StopAt("host.scan-done", 1);
    ChildProcess one(Command({"scan", "--json", first}));
    const auto stop = WaitForStop();
    ASSERT_TRUE(stop);
    WithoutFaults();
    RunWell({"disable", second});
    Continue(*stop);
    EXPECT_EQ(ReadScanSummary(one.Wait()).exitStatus, 0);
    EXPECT_EQ(ListedPaths({"--disabled"}), Strings{second});
    EXPECT_EQ(ListedPaths({"--enabled"}), Strings{first});
}

/// Both hosts use the same result file. One host deletes the other's result before the other has read it.
class ResultFile : public TwoHosts, public testing::WithParamInterface<int>
{};

INSTANTIATE_TEST_SUITE_P(Plugins, ResultFile, testing::Values(1, 2, 3),
                         [](const auto& test) { return "AfterPlugin" + std::to_string(test.param); });

TEST_P(ResultFile, ThatTheOtherHostDeletedIsWrittenAgain)
{
    Strings own;
    for (int number = 0; number < 3; ++number)
        own.push_back(Install("good/vst2_effect", "own" + std::to_string(number)).string());
    const auto other = Install("good/vst2_synth", "theirs").string();
    StopAt("host.entity-answered", static_cast<unsigned>(GetParam()));
    Strings arguments{"scan", "--json"};
    arguments.insert(arguments.end(), own.begin(), own.end());
    ChildProcess one(Command(arguments));
    const auto stop = WaitForStop();
    ASSERT_TRUE(stop);
    const ScanSummary theirs = ScanInBetween({other});
    EXPECT_EQ(theirs.exitStatus, 0) << theirs.messages;
    EXPECT_EQ(theirs.found, 1);
    EXPECT_FALSE(std::filesystem::exists(prefs / "AudioPlugins.xml.scan"));
    Continue(*stop);
    const ScanSummary ours = ReadScanSummary(one.Wait());
    EXPECT_EQ(ours.exitStatus, 0) << ours.messages;
    EXPECT_EQ(ours.found, 3);
    own.push_back(other);
    EXPECT_EQ(ListedPaths({"--enabled"}), own);
}

TEST_F(TwoHosts, ThatScanTheSameAtTheSameTimeBothFindAll)
{
    Strings all;
    for (int number = 10; number < 40; ++number)
        all.push_back(Install("good/vst2_effect", "p" + std::to_string(number)).string());
    const auto bad = Install("bad/crash_in_entry", "p20_bad").string();
    // The host that starts later may find the work done, and does it again.
    const Strings scan{"scan", "--json", "--rescan"};
    ChildProcess one(Command(scan)), two(Command(scan));
    for (ChildProcess* host : {&one, &two}) {
        const ScanSummary summary = ReadScanSummary(host->Wait());
        EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
        EXPECT_EQ(summary.found, 30) << summary.messages;
    }
    EXPECT_EQ(ListedPaths({"--enabled"}), all);
    EXPECT_EQ(ListedPaths({"--banned"}), Strings{bad});
    EXPECT_EQ(Scan().scanned, 0);
    EXPECT_EQ(DamagedFiles(), Strings());
}

TEST_F(TwoHosts, ThatScanDifferentPluginsAtTheSameTimeLoseNone)
{
    Strings all, first{"scan", "--json"}, second{"scan", "--json"};
    for (int number = 10; number < 50; ++number) {
        all.push_back(Install("good/vst2_effect", "p" + std::to_string(number)).string());
        (number % 2 ? first : second).push_back(all.back());
    }
    ChildProcess one(Command(first)), two(Command(second));
    for (ChildProcess* host : {&one, &two})
        EXPECT_EQ(ReadScanSummary(host->Wait()).found, 20);
    EXPECT_EQ(ListedPaths({"--enabled"}), all);
}

} // namespace
