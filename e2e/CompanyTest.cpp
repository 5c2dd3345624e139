// Tests that plug-ins which are scanned at the same time are not blamed for each other, and that it makes no
// difference to the results how many are.
#include <algorithm>
#include <sstream>

#include <gmock/gmock.h>

#include "ManagerFixture.h"

namespace {

using testing::AllOf;
using testing::Each;
using testing::HasSubstr;
using testing::Le;
using testing::SizeIs;
using Strings = std::vector<std::string>;
using zettesting::ChildProcess;

std::string NameOfWorkers(int workers)
{
    return workers == 1 ? "OneWorker" : std::to_string(workers) + "Workers";
}

class Company : public ManagerFixture
{
  protected:
    Strings InstallSeveral(const std::string& plugin, std::size_t count)
    {
        Strings paths;
        const std::string title = std::filesystem::path(plugin).filename().string();
        for (std::size_t number = 0; number < count; ++number)
            paths.push_back(Install(plugin, std::to_string(number) + "_" + title).string());
        return paths;
    }

    /// The files that scanners leave for others of their scan. At its end they are gone.
    Strings LeftByScanners() const
    {
        ExpectNoProcessLeft();
        Strings names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder / "runtime"))
            if (entry.path().filename().string().starts_with("zetaudiofilterscan-"))
                names.push_back(entry.path().filename().string());
        return names;
    }

    Strings LinesOf(const std::filesystem::path& file) const
    {
        std::istringstream text(std::filesystem::exists(file) ? zettesting::ReadAll(file) : "");
        Strings lines;
        for (std::string line; std::getline(text, line);) {
            // Windows writes both characters at the end of a line.
            if (line.ends_with('\r'))
                line.pop_back();
            lines.push_back(line);
        }
        return lines;
    }
};

class InWorkers : public Company, public testing::WithParamInterface<int>
{
  protected:
    InWorkers() { SetSwitch("zetaudiofilterscan.Workers", std::to_string(GetParam())); }
};

INSTANTIATE_TEST_SUITE_P(Company, InWorkers, testing::Values(1, 4),
                         [](const auto& test) { return NameOfWorkers(test.param); });

TEST_P(InWorkers, OnesThatCountFindNoMoreProcessesThanThereAreWorkers)
{
    AllowWriting(folder.Path());
    environment["ZET_TEST_PLUGIN_COUNT"] = (folder / "count").string();
    environment["ZET_TEST_PLUGIN_WAIT"] = "100";
    const Strings all = InstallSeveral("bad/counts_processes", 8);
    const ScanSummary scan = Scan();
    EXPECT_EQ(scan.exitStatus, 0) << scan.messages;
    EXPECT_EQ(scan.banned, Strings());
    EXPECT_EQ(ListedPaths({"--enabled"}), all);
    const Strings counts = LinesOf(folder / "count.txt");
    EXPECT_THAT(counts, SizeIs(all.size()));
    EXPECT_THAT(counts, Each(Le(std::to_string(GetParam()))));
    EXPECT_EQ(std::ranges::count(counts, "1") == std::ssize(counts), GetParam() == 1)
        << "several are scanned at the same time: " << testing::PrintToString(counts);
}

TEST_P(InWorkers, ACulpritIsTriedTwiceAndNotAgainByTheScannersThatFollow)
{
    AllowWriting(folder.Path());
    environment["ZET_TEST_PLUGIN_COUNT"] = (folder / "count").string();
    const Strings bad = InstallSeveral("bad/counts_and_crashes", 5);
    const Strings good = InstallSeveral("good/vst2_effect", 5);
    const ScanSummary scan = Scan();
    EXPECT_EQ(scan.exitStatus, 0) << scan.messages;
    EXPECT_EQ(scan.banned, bad);
    EXPECT_EQ(ListedPaths({"--enabled"}), good);
    EXPECT_THAT(LinesOf(folder / "count"), SizeIs(2 * bad.size()));
    EXPECT_EQ(LeftByScanners(), Strings());
}

TEST_P(InWorkers, OneThatTakesTooMuchMemoryIsEndedAndTheReasonSaysSo)
{
    SetSwitch("zetaudiofilterscan.MemoryLimitMB", "300");
    environment["ZET_TEST_PLUGIN_MEMORY"] = "600";
    const Strings good{Install("good/vst2_effect", "a_effect").string(),
                       Install("good/vst2_synth", "c_synth").string()};
    const auto greedy = Install("bad/takes_memory", "b_greedy").string();
    const ScanSummary scan = Scan();
    EXPECT_EQ(scan.exitStatus, 0) << scan.messages;
    EXPECT_EQ(scan.banned, Strings{greedy});
    EXPECT_EQ(ListedPaths({"--enabled"}), good);
    EXPECT_THAT(FindListed(greedy)->reason, HasSubstr("took more than 300 MB of memory"));
}

TEST_P(InWorkers, CancellingEndsAllWorkersAndBansNothing)
{
    const auto good = Install("good/vst2_effect", "00_effect").string();
    InstallSeveral("bad/hangs_on_load", 6);
    auto command = Command({"scan", "--json"});
    command.interruptible = true;
    ChildProcess scan(command);
    // The host has been told of one of them.
    ASSERT_TRUE(scan.WaitForError("hangs_on_load"));
    scan.Interrupt();
    const auto& result = scan.Wait();
    EXPECT_EQ(result.exitStatus, 130) << result.error;
    EXPECT_EQ(ReadScanSummary(result).banned, Strings());
    EXPECT_EQ(LeftByScanners(), Strings());
    EXPECT_EQ(ListedPaths(), Strings{good});
    EXPECT_EQ(List({"--banned"}).size(), 0u);
}

TEST_P(InWorkers, AKilledHostLeavesNoWorker)
{
    InstallSeveral("bad/hangs_on_load", 6);
    ChildProcess scan(Command({"scan"}));
    ASSERT_TRUE(scan.WaitForError("hangs_on_load"));
    scan.Kill();
    ExpectNoProcessLeft();
    EXPECT_EQ(List({"--banned"}).size(), 0u);
}

TEST_P(InWorkers, HangsAreBannedWhereverTheyAre)
{
    const Strings hanging{Install("bad/hangs_on_load", "0_hangs").string(),
                          Install("bad/loops_forever", "4_hangs").string(),
                          Install("bad/hangs_when_asked_name", "5_hangs").string(),
                          Install("bad/hangs_on_close", "9_hangs").string()};
    const Strings good = InstallSeveral("good/vst2_effect", 10);
    const ScanSummary scan = Scan({"--timeout", "1"});
    EXPECT_EQ(scan.exitStatus, 0) << scan.messages;
    EXPECT_EQ(scan.banned, hanging);
    EXPECT_EQ(ListedPaths({"--enabled"}), good);
    for (const std::string& path : hanging)
        EXPECT_THAT(FindListed(path)->reason, HasSubstr("took longer than 1 second"));
}

/// These bear no other of their kind in another process.
class Locking : public Company, public testing::WithParamInterface<std::tuple<const char*, int>>
{
  protected:
    Locking()
    {
        SetSwitch("zetaudiofilterscan.Workers", std::to_string(std::get<int>(GetParam())));
        AllowWriting(plugins);
    }
};

INSTANTIATE_TEST_SUITE_P(Company, Locking,
                         testing::Combine(testing::Values("crashes_when_locked", "refuses_when_locked",
                                                          "keeps_lock", "waits_for_lock"),
                                          testing::Values(1, 4)),
                         [](const auto& test) {
                             return std::get<const char*>(test.param) + std::string("_") +
                                    NameOfWorkers(std::get<int>(test.param));
                         });

TEST_P(Locking, OnesOfOneFolderAreNotBlamedForEachOther)
{
    environment["ZET_TEST_PLUGIN_WAIT"] = "50";
    const Strings all = InstallSeveral(std::string("bad/") + std::get<const char*>(GetParam()), 6);
    const ScanSummary scan = Scan({"--timeout", "2"});
    EXPECT_EQ(scan.exitStatus, 0) << scan.messages;
    EXPECT_EQ(scan.banned, Strings());
    EXPECT_EQ(scan.found, static_cast<long long>(all.size())) << scan.messages;
    EXPECT_EQ(ListedPaths({"--enabled"}), all);
    const auto [plugin, workers] = GetParam();
    if (workers == 1) {
        EXPECT_EQ(ScanLogs(), "");
    } else if (plugin == std::string_view("waits_for_lock")) {
        EXPECT_THAT(ScanLogs(), HasSubstr("may wait for something that it holds; loaded in it: "));
    } else {
        EXPECT_THAT(ScanLogs(),
                    AllOf(HasSubstr("in other processes meanwhile"), HasSubstr("passed when it was alone")));
    }
}

TEST_P(Locking, BadOnesAmongThemAreBlamedAlone)
{
    environment["ZET_TEST_PLUGIN_WAIT"] = "20";
    const Strings all = InstallSeveral(std::string("bad/") + std::get<const char*>(GetParam()), 4);
    const Strings bad{Install("bad/crash_in_entry", "1_bad").string(),
                      Install("bad/exits_zero", "3_bad").string()};
    const ScanSummary scan = Scan({"--timeout", "2"});
    EXPECT_EQ(scan.exitStatus, 0) << scan.messages;
    EXPECT_EQ(scan.banned, bad);
    EXPECT_EQ(ListedPaths({"--enabled"}), all);
}

TEST_F(Company, OneThatWaitsForAnIdleWorkersLockGetsOnLongBeforeItsTimeLimit)
{
    SetSwitch("zetaudiofilterscan.Workers", "4");
    AllowWriting(plugins);
    const Strings all = InstallSeveral("bad/waits_for_lock", 4);
    const ScanSummary scan = Scan({"--timeout", "4000"});
    EXPECT_EQ(scan.exitStatus, 0) << scan.messages;
    EXPECT_EQ(scan.banned, Strings());
    EXPECT_EQ(ListedPaths({"--enabled"}), all);
    EXPECT_THAT(ScanLogs(), HasSubstr("in other processes meanwhile: "));
}

class SameResults : public Company
{
  protected:
    struct Results
    {
        std::string registry;
        std::vector<ListedPlugin> list;
        Strings banned;
    };

    Results ScanWith(int jobs)
    {
        std::filesystem::remove_all(prefs);
        UseFolders({plugins});
        const ScanSummary scan = Scan({"--jobs", std::to_string(jobs)});
        EXPECT_EQ(scan.exitStatus, 0) << scan.messages;
        Results results{zettesting::ReadAll(prefs / "AudioPlugins.xml"), List(), scan.banned};
        // The time of a ban is the clock's.
        for (ListedPlugin& plugin : results.list)
            plugin.bannedAt.clear();
        return results;
    }
};

TEST_F(SameResults, ComeWithAnyNumberOfWorkers)
{
    for (const zettesting::TestPluginFacts& facts : zettesting::GoodTestPluginFacts())
        if (!std::filesystem::exists(plugins / zettesting::TestPlugin(facts.plugin).filename()))
            Install(facts.plugin, std::filesystem::path(facts.plugin).filename().string());
    Install("bad/returns_null", "b_null");
    Install("bad/crash_in_entry", "d_crash");
    Install("bad/throws_exception", "w_throws");
    InstallSeveral("bad/waits", 5);
    zettesting::MakeTextModule(plugins);
    const Results one = ScanWith(1);
    EXPECT_THAT(one.banned, SizeIs(3));
    for (const int jobs : {2, 4, 16}) {
        const Results several = ScanWith(jobs);
        EXPECT_EQ(several.registry, one.registry) << jobs;
        EXPECT_EQ(several.list, one.list) << jobs;
        EXPECT_EQ(several.banned, one.banned) << jobs;
    }
}

} // namespace
