// Scanners that cannot be started, that end, or that stay silent; and plug-ins that hold a scanner up.
#include <chrono>
#include <csignal>

#include <gmock/gmock.h>

#include "FaultFixture.h"
#include "LoopbackSocket.h"

namespace {

using Strings = std::vector<std::string>;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using zettesting::ChildProcess;

/// The host runs in a folder of its own, and the test puts a scanner beside it.
class OddScanner : public FaultFixture
{
  protected:
    OddScanner()
    {
        Install("good/vst2_effect", "effect");
        const auto bin = folder / "bin";
        std::filesystem::create_directory(bin);
        for (const auto& entry : std::filesystem::directory_iterator(ProgramFolder()))
            if (entry.path().filename().string().starts_with("libzet"))
                std::filesystem::copy(entry.path(), bin / entry.path().filename());
        std::filesystem::copy(program, bin / program.filename());
        program = bin / program.filename();
    }
    ~OddScanner() override
    {
        // The host deliberately leaves a silent scanner running. The ones of this test would run for ever.
        for (const SeenProcess& process : Processes())
            ::kill(process.number, SIGKILL);
    }

    std::filesystem::path ScannerPath() const { return program.parent_path() / "zetaudiofilterscan"; }
    void WriteScanner(const std::string& bytes, bool executable = true) const
    {
        zettesting::WriteAll(ScannerPath(), bytes);
        std::filesystem::permissions(ScannerPath(), std::filesystem::perms::owner_exec,
                                     executable ? std::filesystem::perm_options::add
                                                : std::filesystem::perm_options::remove);
    }
    /// Installs a scanner that tells this port and then waits.
    void WriteScannerWithPort(std::uint16_t port) const
    {
        std::string digits;
        for (const unsigned byte : {port & 0xFFu, static_cast<unsigned>(port) >> 8}) {
            char octal[8];
            std::snprintf(octal, sizeof octal, "\\%03o", byte);
            digits += octal;
        }
        WriteScanner("#!/bin/sh\nexec 2>/dev/null\nblock=$(find \"$XDG_RUNTIME_DIR\" -name "
                     "ZETAudioFilterScan2)\nprintf '" +
                     digits + "' | dd of=\"$block\" conv=notrunc\nsleep 600\n");
    }
    /// The host would wait for a minute. Its clock is put forward instead.
    void MakeTheHostImpatient() { AddFault("host.port-wait:100:late=61"); }
    void ExpectNotStarted(const std::string& message)
    {
        const ScanSummary scan = Scan();
        EXPECT_EQ(scan.exitStatus, 3) << scan.messages;
        EXPECT_EQ(scan.scanned, 0);
        EXPECT_THAT(scan.messages,
                    AllOf(HasSubstr("the scanner process could not be started; nothing was scanned"),
                          HasSubstr(message), HasSubstr(ScannerPath().string())));
        WithoutFaults();
        EXPECT_EQ(List().size(), 0u);
    }
};

TEST_F(OddScanner, ThatIsMissingIsNamed)
{
    ExpectNotStarted("there is no scanner program");
}

TEST_F(OddScanner, ThatMayNotBeExecutedIsNamed)
{
    WriteScanner(zettesting::ReadAll(ProgramFolder() / "zetaudiofilterscan"), false);
    ExpectNotStarted("the scanner program may not be executed");
}

TEST_F(OddScanner, OfAnotherProcessorIsNamed)
{
    std::string bytes = zettesting::ReadAll(ProgramFolder() / "zetaudiofilterscan");
    constexpr std::size_t machine = 18;
    bytes.at(machine) = static_cast<char>(bytes.at(machine) == 0x3E ? 0xB7 : 0x3E);
    WriteScanner(bytes);
    ExpectNotStarted("the scanner program is none for this system");
}

TEST_F(OddScanner, ThatIsNoProgramIsNamed)
{
    WriteScanner("no program at all, just text");
    ExpectNotStarted("the scanner program is none for this system");
}

TEST_F(OddScanner, ThatEndsBeforeItHasToldAPortIsNamedWithItsExitStatus)
{
    WriteScanner("#!/bin/sh\nexit 7\n");
    ExpectNotStarted("ended with exit status 7");
}

TEST_F(OddScanner, ThatNeverWritesAPortIsToldWhenItsTimeIsUpAndIsLeftRunning)
{
    WriteScanner("#!/bin/sh\nexec 2>/dev/null\nsleep 600\n");
    MakeTheHostImpatient();
    ExpectNotStarted("did not tell within");
    EXPECT_FALSE(Processes().empty()) << "as documented";
}

TEST_F(OddScanner, ThatWritesAPortNobodyListensOnIsTold)
{
    const std::uint16_t port = LoopbackSocket::Listening().Port();
    WriteScannerWithPort(port);
    ExpectNotStarted("does not answer at port " + std::to_string(port));
}

TEST_F(OddScanner, ThatAcceptsAndStaysSilentCanBeCancelled)
{
    const LoopbackSocket silent = LoopbackSocket::Listening();
    WriteScannerWithPort(silent.Port());
    ChildProcess host(Command({"scan", "--json"}));
    ASSERT_TRUE(host.WaitForError("Scanning Audio Plug-Ins"));
    host.Interrupt();
    const auto& result = host.Wait();
    EXPECT_EQ(result.exitStatus, 130) << result.error;
    EXPECT_EQ(List({"--banned"}).size(), 0u);
}

TEST_F(OddScanner, ThatAnswersNothingButGarbageEndsTheScanAndIsTold)
{
    std::filesystem::copy(ZET_FAKE_SCANNER, ScannerPath());
    const auto scripts = folder / "scripts";
    std::filesystem::create_directory(scripts);
    // There are more answers than the host tries.
    for (int number = 1; number <= 20; ++number)
        zettesting::WriteAll(scripts / ("script." + std::to_string(number)),
                             "listen-raw\nok\nok\nreply []\n");
    environment["ZET_FAKE_SCANNER"] = scripts.string();
    environment["ZET_TRACE"] = "volume=1";
    const ScanSummary scan = Scan();
    EXPECT_EQ(scan.exitStatus, 3) << scan.messages;
    EXPECT_EQ(scan.scanned, 0);
    EXPECT_THAT(scan.messages, AllOf(HasSubstr("\"result\" of GetScanInfo's reply has a wrong type"),
                                     HasSubstr("failed again and again without getting on")));
    EXPECT_FALSE(std::filesystem::exists(scripts / "launch.20"));
    EXPECT_EQ(List({"--banned"}).size(), 0u);
}

/// The system starts no worker any more: from the first worker on, or from the second one, which is to try a
/// plug-in alone.
class NoWorker : public FaultFixture, public testing::WithParamInterface<int>
{};

INSTANTIATE_TEST_SUITE_P(From, NoWorker, testing::Values(1, 2),
                         [](const auto& test) { return test.param == 1 ? "TheFirst" : "TheSecond"; });

TEST_P(NoWorker, CanBeHadSoTheRestIsLeftForTheNextScanAndNothingIsBanned)
{
    const Strings good{Install("good/vst2_effect", "a_effect").string(),
                       Install("good/vst2_synth", "c_synth").string()};
    const auto bad = Install("bad/crash_in_entry", "b_bad").string();
    AddFault("supervisor.worker:" + std::to_string(GetParam()) + ":no-space");
    const ScanSummary scan = Scan();
    EXPECT_EQ(scan.exitStatus, 3) << scan.messages;
    EXPECT_EQ(scan.scanned, GetParam() - 1);
    EXPECT_EQ(scan.banned, Strings());
    EXPECT_THAT(scan.messages, AllOf(HasSubstr("not scanned, the next scan tries it again: " + bad),
                                     HasSubstr("tries it again: " + good.back()),
                                     HasSubstr("the worker process could not be started: No space")));
    WithoutFaults();
    EXPECT_EQ(ListedPaths(), Strings(good.begin(), good.begin() + GetParam() - 1));

    const ScanSummary next = Scan();
    EXPECT_EQ(next.exitStatus, 0) << next.messages;
    EXPECT_EQ(next.scanned, 4 - GetParam());
    EXPECT_EQ(next.banned, Strings{bad});
    EXPECT_EQ(ListedPaths({"--enabled"}), good);
}

class OddChild : public FaultFixture
{
  protected:
    ~OddChild() override
    {
        for (const SeenProcess& process : Processes())
            ::kill(process.number, SIGKILL);
    }
};

TEST_F(OddChild, ThatOutlivesACrashingPluginWithItsFilesOpenDoesNotHideTheCrash)
{
    const auto first = Install("good/vst2_effect", "a_effect").string();
    const auto bad = Install("bad/leaves_child_and_crashes", "b_bad").string();
    const auto last = Install("good/vst2_synth", "c_synth").string();
    // If the crash were not noticed, the scan would take longer than this test waits.
    const ScanSummary scan = Scan({"--timeout", "4000"});
    EXPECT_EQ(scan.exitStatus, 0) << scan.messages;
    RecordProperty("milliseconds", static_cast<int>(scan.seconds * 1000));
    EXPECT_EQ(scan.banned, Strings{bad});
    EXPECT_THAT(FindListed(bad)->reason, HasSubstr("crashed (segmentation fault)"));
    EXPECT_EQ(ListedPaths({"--enabled"}), (Strings{first, last}));
    EXPECT_FALSE(Processes().empty()) << "the children are still there";
}

/// A plug-in can hang in each of these phases.
class HangingPlugin : public FaultFixture, public testing::WithParamInterface<const char*>
{};

INSTANTIATE_TEST_SUITE_P(Each, HangingPlugin,
                         testing::Values("hangs_on_load", "loops_forever", "hangs_in_vst3_factory",
                                         "hangs_when_asked_name", "hangs_on_close", "deadlocks_on_unload"),
                         [](const auto& test) { return std::string(test.param); });

TEST_P(HangingPlugin, EndsWithTheScannerWhenTheUserCancelsAndIsNotBanned)
{
    const auto good = Install("good/vst2_effect", "a_effect").string();
    const auto hanging = Install(std::string("bad/") + GetParam(), "b_hanging").string();
    ChildProcess host(Command({"scan", "--json"}));
    ASSERT_TRUE(host.WaitForError(hanging));
    host.Interrupt();
    const auto& result = host.Wait();
    EXPECT_FALSE(result.timedOut) << "the plug-in's time limit is a minute";
    EXPECT_EQ(result.exitStatus, 130) << result.error;
    ExpectNoProcessLeft();
    EXPECT_EQ(ListedPaths(), Strings{good});
}

class KillingPlugin : public FaultFixture
{};

TEST_F(KillingPlugin, CannotEndTheScannerAndIsBannedAlone)
{
    Strings good;
    for (const char* title : {"a_first", "b_second", "x_third", "y_fourth", "z_last"})
        good.push_back(Install("good/vst2_effect", title).string());
    const auto killer = Install("bad/kills_scanner", "m_killer").string();
    const ScanSummary summary = Scan({"--jobs", "4"});
    EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
    EXPECT_EQ(summary.banned, Strings{killer});
    EXPECT_EQ(ListedPaths({"--enabled"}), good);
    EXPECT_THAT(FindListed(killer)->reason, HasSubstr("crashed (aborted) in its entry function"));
    EXPECT_THAT(ScanLogs(), Not(HasSubstr("was killed")));
}

} // namespace
