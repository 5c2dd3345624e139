#include "scan/launch/ScannerProcess.h"

#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/filesupport/sharing/MemoryMappedFile.h>
#include <zetcore/string/Utf.h>

#include "testing/ExternalScanFixture.h"

#include <windows.h>

namespace zetaudiopluginhostui {
namespace {

class ScannerProcessTest : public ExternalScanFixture
{
  protected:
    static zetcore::filesupport::File FactsProgram()
    {
        return zetcore::filesupport::File(
            zettesting::ToWide(std::filesystem::absolute(ZET_PROCESS_FACTS_PROGRAM)));
    }
    static zetcore::filesupport::File FakeScanner()
    {
        return zetcore::filesupport::File(
            zettesting::ToWide(std::filesystem::absolute(ZET_FAKE_SCANNER_FOLDER)) + L"\\" +
            ScannerFileName());
    }
    static HANDLE HandleOf(ScannerProcess process) { return reinterpret_cast<HANDLE>(process.handle); }
    static bool HasEnded(ScannerProcess process, DWORD milliseconds)
    {
        return ::WaitForSingleObject(HandleOf(process), milliseconds) == WAIT_OBJECT_0;
    }

    static constexpr DWORD aMinute = 60'000;
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

TEST_F(ScannerProcessTest, StartsWithoutArgumentsOrInheritedHandlesOrAWindow)
{
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    // The handle gets a number that a small program's own handles do not reach.
    HANDLE ours = nullptr;
    std::vector<HANDLE> handles;
    while (reinterpret_cast<std::uintptr_t>(ours) < 4096) {
        ours = ::CreateEventW(&inheritable, TRUE, FALSE, nullptr);
        ASSERT_NE(ours, nullptr);
        handles.push_back(ours);
    }
    const zettesting::ScopedEnvironment handle("ZET_INHERITABLE_HANDLE",
                                               std::to_string(reinterpret_cast<std::uintptr_t>(ours)));
    const ScannerProcess process = StartScannerProcess(FactsProgram());
    ASSERT_TRUE(process);
    EXPECT_TRUE(HasEnded(process, aMinute));
    EXPECT_EQ(zettesting::ReadAll(facts), "arguments 0\r\n"
                                          "folder " +
                                              std::filesystem::current_path().string() +
                                              "\r\n"
                                              "start-up flags 0\r\n"
                                              "inherited 0\r\n"
                                              "visible console 0\r\n");
    EndScannerProcess(process);
    for (const HANDLE event : handles)
        ::CloseHandle(event);
}

TEST_F(ScannerProcessTest, TellsHowOneHasEndedAndNothingOfOneThatRuns)
{
    Script(1, {"none", "touch running", "wait forever"});
    const ScannerProcess process = StartScannerProcess(FakeScanner());
    WaitForFile("running");
    EXPECT_FALSE(FindScannerProcessEnd(process));
    ASSERT_TRUE(::TerminateProcess(HandleOf(process), 0xC0000135));
    EXPECT_TRUE(HasEnded(process, aMinute));
    EXPECT_EQ(StatusOf(process), "exit status 0xc0000135");
    EndScannerProcess(process);

    Script(2, {"die"});
    const ScannerProcess second = StartScannerProcess(FakeScanner());
    EXPECT_TRUE(HasEnded(second, aMinute));
    EXPECT_EQ(StatusOf(second), "exit status 1");
    EndScannerProcess(second);
}

TEST_F(ScannerProcessTest, EndingOneThatRunsEndsItAndClosesItsHandle)
{
    Script(1, {"none", "touch running", "wait forever"});
    const ScannerProcess process = StartScannerProcess(FakeScanner());
    ASSERT_TRUE(process);
    WaitForFile("running");
    EXPECT_FALSE(HasEnded(process, 0));
    HANDLE second = nullptr;
    ASSERT_TRUE(::DuplicateHandle(::GetCurrentProcess(), HandleOf(process), ::GetCurrentProcess(), &second, 0,
                                  FALSE, DUPLICATE_SAME_ACCESS));
    EndScannerProcess(process);
    EXPECT_EQ(::WaitForSingleObject(second, aMinute), WAIT_OBJECT_0);
    DWORD exitCode = 1;
    EXPECT_TRUE(::GetExitCodeProcess(second, &exitCode));
    EXPECT_EQ(exitCode, 0u);
    ::CloseHandle(second);
    DWORD flags = 0;
    EXPECT_FALSE(::GetHandleInformation(HandleOf(process), &flags));
}

TEST_F(ScannerProcessTest, EndingOneThatHasEndedOrNoneDoesNothing)
{
    const ScannerProcess process = StartScannerProcess(FactsProgram());
    ASSERT_TRUE(HasEnded(process, aMinute));
    EndScannerProcess(process);
    EndScannerProcess(ScannerProcess());
    EXPECT_TRUE(std::filesystem::exists(facts));
}

TEST_F(ScannerProcessTest, AProgramThatIsNotStartedThrowsWithItsPathAndTheSystemsWords)
{
    const zetcore::filesupport::File missing(folder.Wide() + L"\\missing");
    try {
        StartScannerProcess(missing);
        FAIL();
    } catch (const zetcore::filesupport::file_exception& error) {
        EXPECT_EQ(error.Path(), missing.FullPath());
        EXPECT_NE(error.Cause().value(), 0);
    }
}

} // namespace
} // namespace zetaudiopluginhostui
