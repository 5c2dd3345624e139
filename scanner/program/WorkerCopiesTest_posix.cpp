// Workers that are copies of a process, instead of programs that are started anew.
#include <algorithm>
#include <functional>

#include <unistd.h>

#include <zetcore/utility/Backoff.h>
#include <zettesting/Patience.h>

#include "ProcessStat_posix.h"
#include "ScannerFixture.h"
#include "StopPipe_posix.h"

namespace zetaudiofilterscan {
namespace {

using testing::IsSubsetOf;
using testing::SizeIs;
using testing::UnorderedElementsAreArray;
using zetaudiofilterhost::PluginLocator;

namespace fs = std::filesystem;

class WorkerCopies : public ScannerFixture
{
  protected:
    WorkerCopies() : ScannerFixture(2) { fs::create_directory(folder / "made"); }

    std::vector<PluginLocator> Made(const std::string& plugin, const std::string& name, int count)
    {
        std::vector<PluginLocator> locators;
        for (int number = 0; number < count; ++number)
            locators.push_back(LocatorOf(
                zettesting::CopyTestPlugin(plugin, folder / "made", name + std::to_string(number))));
        return locators;
    }

    /// The process that makes copies is the first of them; the others are its copies, and their guards.
    std::vector<int> ProcessesThatAreCopies() const
    {
        std::vector<int> numbers;
        for (const std::string& line : RunningProcesses()) {
            const int number = std::stoi(line);
            try {
                if (zettesting::ReadAll(ProcessFolder(number) / "cmdline").find("--copies") !=
                    std::string::npos)
                    numbers.push_back(number);
            } catch (const std::runtime_error&) {
                // It has ended since.
            }
        }
        std::ranges::sort(numbers);
        return numbers;
    }
    static fs::path ProcessFolder(int number) { return fs::path("/proc") / std::to_string(number); }
    static std::vector<std::string> DescriptorsOf(int process)
    {
        std::vector<std::string> numbers;
        for (const auto& entry : fs::directory_iterator(ProcessFolder(process) / "fd"))
            numbers.push_back(entry.path().filename().string());
        return numbers;
    }

    int LoggedTimes(const std::string& text) const
    {
        const std::string logs = ScanLogs();
        int times = 0;
        for (auto at = logs.find(text); at != logs.npos; at = logs.find(text, at + 1))
            ++times;
        return times;
    }

    /// Scans plug-ins that need many workers, while each process that makes copies has this fault when it is
    /// asked for the first.
    void ScanWithFault(const std::string& fault, ScannerClient::Environment environment = {})
    {
        constexpr int good = 3, bad = 6;
        std::vector<PluginLocator> locators = Made("good/vst2_effect", "good", good);
        for (const PluginLocator& each : Made("bad/aborts", "bad", bad))
            locators.push_back(each);
        environment.insert_or_assign("ZET_FAULT", "worker.copy:1:" + fault);
        const WholeScan scan = ScanAll(prefs, locators, environment);
        EXPECT_THAT(scan.reported, UnorderedElementsAreArray(locators));
        EXPECT_THAT(scan.failed, SizeIs(bad));
        for (int number = 0; number < good; ++number)
            EXPECT_THAT(scan.results, testing::HasSubstr("good" + std::to_string(number) + "."));
    }
};

TEST_F(WorkerCopies, AreLikeWorkersThatWereStarted)
{
    WriteDebugDatabase("zetaudiofilterscan.EntityTimeoutSeconds = 500\n");
    // Each crash needs two new workers.
    std::vector<PluginLocator> locators = Made("bad/aborts", "bad", 4);
    for (const PluginLocator& hanging : Made("bad/loops_forever", "hanging", 2))
        locators.push_back(hanging);
    ScannerClient client(prefs);
    client.StartScan(locators);
    // From then on nothing changes: both workers run a plug-in that does not end.
    ASSERT_TRUE(zettesting::Becomes([&] { return LoggedTimes("loops from now on") == 2; })) << ScanLogs();
    std::vector<int> copies;
    // The one that makes them, two workers, and the guard of each.
    ASSERT_TRUE(zettesting::Becomes([&] {
        copies = ProcessesThatAreCopies();
        return copies.size() == 5;
    })) << copies.size();
    const int supervisor = StatOf(copies.front()).parent;
    int seen = 0;
    for (const int copy : copies) {
        if (copy == copies.front() || ::getsid(copy) != copy)
            continue;
        ++seen;
        EXPECT_EQ(StatOf(copy).parent, supervisor);
        EXPECT_THAT(DescriptorsOf(copy), IsSubsetOf({"0", "1", "2", "3", "4"}));
    }
    EXPECT_EQ(seen, 2);
    client.Close();
    client.Process().Wait();
}

TEST_F(WorkerCopies, AreDoneWithoutWhenTheProcessThatMakesThemIsKilled)
{
    ScanWithFault("kill");
}

TEST_F(WorkerCopies, AreDoneWithoutWhenTheProcessThatMakesThemStandsStill)
{
    const StopPipe pipe(folder / "pipe");
    ScanWithFault("stop", {{"ZET_FAULT_PIPE", pipe.Name()}});
    EXPECT_TRUE(pipe.IsTaken()) << "none stood still";
}

TEST_F(WorkerCopies, AreDoneWithoutWhenNoneCanBeMade)
{
    ScanWithFault("no-space");
}

} // namespace
} // namespace zetaudiofilterscan
