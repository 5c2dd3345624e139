#include "scan/launch/ScannerProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include <gmock/gmock.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/filesupport/sharing/MemoryMappedFile.h>
#include <zetcore/string/Utf.h>

#include "testing/ExternalScanFixture.h"

namespace zetaudiopluginhostui {
namespace {

class ScannerProcessTest : public ExternalScanFixture
{
  protected:
    static zetcore::filesupport::File FactsProgram()
    {
        return zetcore::filesupport::File(zetcore::string::UTF8to16(ZET_PROCESS_FACTS_PROGRAM));
    }
    static zetcore::filesupport::File FakeScanner()
    {
        return zetcore::filesupport::File(zetcore::string::UTF8to16(ZET_FAKE_SCANNER_FOLDER) + L"/" +
                                          ScannerFileName());
    }
    /// Waits until the process has ended. It can still be collected afterwards.
    static void WaitForEnd(ScannerProcess process)
    {
        siginfo_t info = {};
        ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(process.handle), &info, WEXITED | WNOWAIT), 0);
    }
    static bool IsKnownToTheSystem(ScannerProcess process)
    {
        return ::kill(static_cast<pid_t>(process.handle), 0) == 0;
    }

    static std::string StatusOf(ScannerProcess process)
    {
        const auto end = FindScannerProcessEnd(process);
        return end ? end->Tell({"exit status @0", "signal @0", "ended"}, "") : "runs";
    }
    /// Makes the block that the fake scanner looks for first.
    void SetUp() override
    {
        ASSERT_TRUE(
            block.Init("ZETAudioFilterScan2", 8, zetcore::filesupport::MemoryMappedFile::CreateLocked));
    }

    zetcore::filesupport::MemoryMappedFile block;
    const std::filesystem::path facts = folder / "facts";
    zettesting::ScopedEnvironment factsFile{"ZET_PROCESS_FACTS", facts.string()};
};

TEST_F(ScannerProcessTest, StartsWithoutArgumentsOrOpenFilesOrSignalSettingsInASessionOfItsOwn)
{
    const int inheritable = ::open("/dev/null", O_RDONLY);
    ASSERT_EQ(::fcntl(inheritable, F_GETFD), 0);
    sigset_t blocked;
    sigset_t before;
    ::sigemptyset(&blocked);
    ::sigaddset(&blocked, SIGUSR1);
    ::pthread_sigmask(SIG_BLOCK, &blocked, &before);
    ::signal(SIGUSR2, SIG_IGN);

    const ScannerProcess process = StartScannerProcess(FactsProgram());

    ::signal(SIGUSR2, SIG_DFL);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    ::close(inheritable);
    ASSERT_TRUE(process);
    WaitForEnd(process);
    EXPECT_EQ(zettesting::ReadAll(facts), "arguments 0\n"
                                          "program " ZET_PROCESS_FACTS_PROGRAM "\n"
                                          "folder " +
                                              std::filesystem::current_path().string() +
                                              "\n"
                                              "descriptors 0 1 2\n"
                                              "input /dev/null\n"
                                              "output /dev/null\n"
                                              "own session 1\n"
                                              "SIGUSR1 blocked 0\n"
                                              "SIGUSR2 ignored 0\n");
    EndScannerProcess(process);
}

TEST_F(ScannerProcessTest, TellsHowOneHasEndedAndNothingOfOneThatRuns)
{
    Script(1, {"none", "touch running", "wait forever"});
    const ScannerProcess process = StartScannerProcess(FakeScanner());
    WaitForFile("running");
    EXPECT_FALSE(FindScannerProcessEnd(process));
    ::kill(static_cast<pid_t>(process.handle), SIGTERM);
    WaitForEnd(process);
    for (int look = 1; look <= 2; ++look)
        EXPECT_EQ(StatusOf(process), "signal 15 (Terminated)");
    EndScannerProcess(process);
    EXPECT_EQ(StatusOf(process), "ended");

    Script(2, {"die"});
    const ScannerProcess second = StartScannerProcess(FakeScanner());
    WaitForEnd(second);
    EXPECT_EQ(StatusOf(second), "exit status 1");
    EndScannerProcess(second);
}

TEST_F(ScannerProcessTest, EndingOneThatRunsEndsItAtOnceAndCollectsIt)
{
    Script(1, {"none", "touch running", "wait forever"});
    const ScannerProcess process = StartScannerProcess(FakeScanner());
    ASSERT_TRUE(process);
    WaitForFile("running");
    EXPECT_TRUE(ScannersRun());
    EXPECT_TRUE(IsKnownToTheSystem(process));
    EndScannerProcess(process);
    EXPECT_FALSE(IsKnownToTheSystem(process));
}

TEST_F(ScannerProcessTest, EndingOneThatHasEndedCollectsItAndEndingItAgainDoesNothing)
{
    const ScannerProcess process = StartScannerProcess(FactsProgram());
    WaitForEnd(process);
    EndScannerProcess(process);
    EXPECT_FALSE(IsKnownToTheSystem(process));
    EndScannerProcess(process);
    EndScannerProcess(ScannerProcess());
}

TEST_F(ScannerProcessTest, OneWhoseHandleWasGivenUpIsCollectedAtTheNextLaunch)
{
    const ScannerProcess first = StartScannerProcess(FactsProgram());
    WaitForEnd(first);
    EXPECT_TRUE(IsKnownToTheSystem(first));
    const ScannerProcess second = StartScannerProcess(FactsProgram());
    EXPECT_FALSE(IsKnownToTheSystem(first));
    WaitForEnd(second);
    EndScannerProcess(second);
}

TEST_F(ScannerProcessTest, AProgramThatIsNotStartedThrowsWithItsPathAndTheSystemsWords)
{
    const zetcore::filesupport::File missing(folder.Wide() + L"/missing");
    try {
        StartScannerProcess(missing);
        FAIL();
    } catch (const zetcore::filesupport::file_exception& error) {
        EXPECT_EQ(error.Path(), missing.FullPath());
        EXPECT_NE(error.Cause().value(), 0);
    }
}

TEST_F(ScannerProcessTest, WithoutTheSharedBlockNoScannerIsStarted)
{
    block.CloseFileHandleIfPossible();
    std::filesystem::remove(folder / "runtime" / "ZETAudioFilterScan2");
    std::filesystem::create_directory(folder / "runtime" / "ZETAudioFilterScan2");
    EXPECT_FALSE(Start({}));
    EXPECT_EQ(Launches(), 0);
    EXPECT_FALSE(ExternalAudioPluginScanAccess::Process(*scan));
    EXPECT_THAT(scan->StartFailure(), ::testing::Optional(::testing::HasSubstr("\"ZETAudioFilterScan2\"")));
}

} // namespace
} // namespace zetaudiopluginhostui
