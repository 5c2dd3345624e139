// A long scan in which every tenth plug-in crashes.
#include <fstream>

#include <gmock/gmock.h>

#include "FaultFixture.h"

namespace {

using zettesting::ChildProcess;

struct Holdings
{
    std::size_t descriptors = 0;
    std::size_t threads = 0;
    /// Resident memory in KiB.
    std::size_t memory = 0;
};

class LongScan : public FaultFixture
{
  protected:
    // Each restart sends the list of what is left, which takes the sanitizers much longer. What a restart may
    // keep is the same for any number.
#ifdef ZET_SANITIZED
    static constexpr int total = 2000;
#else
    static constexpr int total = 5000;
#endif

    static std::size_t CountEntries(const std::filesystem::path& path)
    {
        std::error_code ignored;
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path, ignored),
                                                      std::filesystem::directory_iterator()));
    }
    static Holdings HoldingsOf(int process)
    {
        const std::filesystem::path folder = "/proc/" + std::to_string(process);
        Holdings holdings{CountEntries(folder / "fd"), CountEntries(folder / "task"), 0};
        std::ifstream status(folder / "status");
        for (std::string word; status >> word;)
            if (word == "VmRSS:")
                status >> holdings.memory;
        return holdings;
    }
    /// Makes many names for two files. The system takes all names of a file for one library, but no two are
    /// loaded at a time.
    void InstallMany() const
    {
        const auto good = zettesting::CopyTestPlugin("good/vst2_effect", folder.Path(), "good");
        const auto bad = zettesting::CopyTestPlugin("bad/crash_in_entry", folder.Path(), "bad");
        for (int number = 0; number < total; ++number)
            std::filesystem::create_hard_link(number % 10 == 9 ? bad : good,
                                              modules / NameOf(number).append(zettesting::ModuleSuffix()));
    }
    static std::string NameOf(int number)
    {
        return std::to_string(10000 + number);
    }

    const std::filesystem::path& modules = ManagerFixture::plugins;
};

TEST_F(LongScan, InWhichEveryTenthCrashesEndsWithTheRightResultAndLeaksNothing)
{
    InstallMany();
    // Both are the same moment in the scan of one plug-in: one soon after the start, one just before the end.
    // With one worker the restarts are spread over the whole scan.
    StopAt("host.restarting", 5);
    auto command = Command({"scan", "--json", "--jobs", "1"});
    // The address sanitizer keeps freed memory for a while. The host does not hold that memory.
    command.environment["ASAN_OPTIONS"] = "quarantine_size_mb=1";
    ChildProcess host(command);
    const auto early = WaitForStop();
    ASSERT_TRUE(early);
    const Holdings before = HoldingsOf(early->process);
    Continue(*early);

    ASSERT_TRUE(host.WaitForError((modules / NameOf(total - 11)).string(), std::chrono::minutes(10)));
    const Holdings after = HoldingsOf(early->process);
    const ScanSummary scan = ReadScanSummary(host.Wait(std::chrono::minutes(10)));
    EXPECT_EQ(scan.exitStatus, 0) << scan.messages;
    EXPECT_EQ(scan.scanned, total);
    EXPECT_EQ(scan.found, total / 10 * 9);
    EXPECT_EQ(scan.banned.size(), static_cast<std::size_t>(total / 10));
    ExpectNoProcessLeft();

    // One connection more or less may just be opening or closing.
    EXPECT_LE(after.descriptors, before.descriptors + 8);
    EXPECT_LE(after.threads, before.threads + 3);
    // Each plug-in found takes some memory: its record, and the text that was shown.
    constexpr std::size_t perPlugin = 8;
    EXPECT_LE(after.memory, before.memory + perPlugin * total);
    RecordProperty("descriptors",
                   std::to_string(before.descriptors) + " " + std::to_string(after.descriptors));
    RecordProperty("threads", std::to_string(before.threads) + " " + std::to_string(after.threads));
    RecordProperty("memory", std::to_string(before.memory) + " " + std::to_string(after.memory));
    RecordProperty("seconds", std::to_string(scan.seconds));
}

} // namespace
