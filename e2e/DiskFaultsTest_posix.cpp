// Full disks and read-only folders. The user is told, the files on the disk stay whole, and the scan's result
// is right.
#include <gmock/gmock.h>

#include <unistd.h>

#include "FaultFixture.h"

namespace {

using Strings = std::vector<std::string>;
using testing::HasSubstr;
using zettesting::ChildProcess;

int Count(const std::string& text, const std::string& part)
{
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

/// The caution that the host shows when the preferences cannot be written.
constexpr const char* caution = "Read Only";

class DiskFaults : public FaultFixture
{
  protected:
    DiskFaults() : effect(Install("good/vst2_effect", "a_effect").string())
    {
        RunWell({"scan"});
        RunWell({"disable", effect});
        synth = Install("good/vst2_synth", "b_synth").string();
        bad = Install("bad/crash_in_entry", "m_bad").string();
        main = Install("good/vst2_main_entry", "z_main").string();
        registryBefore = zettesting::ReadAll(Registry());
    }

    std::filesystem::path Registry() const { return prefs / "AudioPlugins.xml"; }

    /// Expects that the next start finds the preferences whole, with the user's choice.
    void ExpectWhole() const
    {
        const auto list = Run({"list", "--json"});
        EXPECT_EQ(list.exitStatus, 0) << list.error;
        EXPECT_EQ(list.error, "");
        EXPECT_EQ(DamagedFiles(), Strings());
        EXPECT_EQ(ListedPaths({"--disabled"}), Strings{effect});
    }
    void ExpectTheNextScanToBeRight(const char* reason = "crashed")
    {
        WithoutFaults();
        EXPECT_EQ(Scan().exitStatus, 0);
        ExpectWhole();
        EXPECT_EQ(ListedPaths({"--enabled"}), (Strings{synth, main}));
        EXPECT_EQ(ListedPaths({"--banned"}), Strings{bad});
        EXPECT_THAT(FindListed(bad)->reason, HasSubstr(reason));
    }

    std::string effect, synth, bad, main, registryBefore;
};

struct Fault
{
    const char* place;
    /// The registry is not saved. The exit status tells so.
    bool losesRegistry;
    /// The scanner cannot hand its findings over. Only its bans are known.
    bool losesResults = false;
    /// The reason of a ban is lost.
    bool losesReason = false;
    /// The list of bans is not saved. The exit status tells that, too.
    bool losesBans = false;

    friend void PrintTo(const Fault& fault, std::ostream* stream) { *stream << fault.place; }
};

class FullDisk : public DiskFaults, public testing::WithParamInterface<std::tuple<Fault, const char*>>
{};

const Fault faults[] = {
    {"write.AudioPlugins.xml.open", true},
    {"write.AudioPlugins.xml.write", true},
    {"write.AudioPlugins.xml.rename", true},
    {"write.AudioPlugins.xml.journal.*", false},
    {"append.AudioPlugins.xml.journal.write", false},
    {"write.AudioPlugins.xml.scan.*", false, true},
    {"write.BannedAudioPlugins.xml.open", false, false, false, true},
    {"write.BannedAudioPlugins.xml.write", false, false, false, true},
    {"write.BannedAudioPlugins.xml.rename", false, false, false, true},
    {"write.BannedAudioPlugins.xml.reasons.*", false, false, true},
    {"write.*", true, true, true},
};

INSTANTIATE_TEST_SUITE_P(Each, FullDisk,
                         testing::Combine(testing::ValuesIn(faults),
                                          testing::Values("no-space", "read-only")),
                         [](const auto& test) {
                             std::string name = std::get<0>(test.param).place;
                             name += std::string(".") + std::get<1>(test.param);
                             for (char& character : name)
                                 if (!std::isalnum(character))
                                     character = '_';
                             return name;
                         });

TEST_P(FullDisk, IsToldAndLeavesTheFilesWhole)
{
    const auto& [fault, action] = GetParam();
    AddFault(std::string(fault.place) + ":1:" + action);
    const ScanSummary scan = Scan();
    if (fault.losesRegistry) {
        EXPECT_EQ(scan.exitStatus, 1) << scan.messages;
        EXPECT_EQ(zettesting::ReadAll(Registry()), registryBefore);
    } else {
        EXPECT_EQ(scan.exitStatus, fault.losesBans || fault.losesResults ? 1 : 0) << scan.messages;
    }
    EXPECT_EQ(Count(scan.messages, caution), fault.losesRegistry ? 1 : 0) << scan.messages;
    EXPECT_EQ(scan.scanned, fault.losesResults ? 1 : 3) << "what is in memory does not suffer";
    EXPECT_EQ(scan.banned, Strings{bad});
    WithoutFaults();
    ExpectWhole();
    ExpectTheNextScanToBeRight(fault.losesReason ? "" : "crashed");
}

TEST_F(DiskFaults, InTheHostsOwnProcessEachFailedSaveIsToldAndTheScanGoesOn)
{
    std::filesystem::remove(bad);
    AddFault("write.AudioPlugins.xml.*:1:no-space");
    AddFault("append.*:1:no-space");
    AddFault("write.ScannedPluginPath.txt.*:1:no-space");
    const ScanSummary scan = Scan({"--in-process"});
    EXPECT_EQ(scan.exitStatus, 1) << scan.messages;
    EXPECT_EQ(scan.found, 2);
    EXPECT_EQ(Count(scan.messages, caution), 3) << "before each plug-in, and after the scan:\n"
                                                << scan.messages;
    EXPECT_EQ(zettesting::ReadAll(Registry()), registryBefore);
    WithoutFaults();
    ExpectWhole();
}

TEST_F(DiskFaults, AFileThatMayNotGrowStaysAsItWas)
{
    for (int number = 0; number < 60; ++number)
        Install("good/vst2_effect", "more" + std::to_string(number));
    auto command = Command({"scan", "--json"});
    command.arguments.insert(command.arguments.begin(),
                             {"-c", "ulimit -f 16 && exec \"$0\" \"$@\"", command.program.string()});
    command.program = "/bin/sh";
    const ScanSummary scan = ReadScanSummary(ChildProcess::Run(command));
    EXPECT_EQ(scan.exitStatus, 1) << scan.messages;
    EXPECT_EQ(scan.scanned, 63);
    EXPECT_EQ(Count(scan.messages, caution), 1) << scan.messages;
    ExpectWhole();
    EXPECT_EQ(Scan().exitStatus, 0);
    EXPECT_EQ(ListedPaths({"--enabled"}).size(), 62u);
}

TEST_F(DiskFaults, AFolderThatMayNotBeWrittenToStaysAsItWas)
{
    // An administrator may write everywhere. For administrators a fault point gives the system's error
    // instead.
    if (::geteuid() == 0) {
        AddFault("write.*:1:read-only");
        AddFault("append.*:1:read-only");
    }
    std::filesystem::permissions(prefs,
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    const ScanSummary scan = Scan();
    std::filesystem::permissions(prefs, std::filesystem::perms::owner_all);
    EXPECT_EQ(scan.exitStatus, 1) << scan.messages;
    EXPECT_EQ(scan.banned, Strings{bad});
    EXPECT_EQ(zettesting::ReadAll(Registry()), registryBefore);
    ExpectTheNextScanToBeRight();
}

} // namespace
