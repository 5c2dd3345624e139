// How a scan starts, and how it does not.
#include "scan/ScannerLauncher.h"

#include <gmock/gmock.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/CommonDirs.h>

#include "testing/ExternalScanFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::Contains;
using ::testing::Not;

constexpr char timeoutLine[] = "Timeout while launching scan server\r\n";

/// A clock that moves only when the wait pauses or the test says so.
class ScannerLaunch : public ExternalScanFixture
{
  protected:
    ScannerLaunch()
    {
        zetcore::debug::SetMasterTraceVolume(6);
        PortWait portWait;
        portWait.now = [this] { return start + elapsed; };
        portWait.startPauses = [this] { return [this] { onPause(); }; };
        scan = std::make_shared<ExternalAudioPluginScan>(portWait);
    }
    /// The process that a failed start has left behind: as no StopScan follows, the test lets it end.
    void LetScannerEnd()
    {
        scan.reset();
        EXPECT_TRUE(ScannersRun());
        Touch("end");
        EXPECT_TRUE(ScannersEnd());
    }

    const PortWait::Clock::time_point start{std::chrono::hours(1)};
    PortWait::Clock::duration elapsed{};
    std::function<void()> onPause = [] {};
    const PluginLocator none;
    const PluginLocator a = Plugin("a.so");
};

TEST_F(ScannerLaunch, AScannerThatNeverWritesAPortMakesStartScanFalseAfter60SecondsAndIsLeftRunning)
{
    Script(1, {"none", "touch running", "wait end"});
    onPause = [this] {
        WaitForFile("running");
        elapsed += std::chrono::milliseconds(500);
    };
    EXPECT_FALSE(Start({a}));
    EXPECT_GT(elapsed, std::chrono::seconds(60));
    EXPECT_LE(elapsed, std::chrono::milliseconds(60500));
    EXPECT_THAT(Traced(), Contains(timeoutLine));
    // Neither ended nor given up, not even with the session.
    EXPECT_TRUE(ExternalAudioPluginScanAccess::Process(*scan));
    EXPECT_TRUE(reports.empty());
    LetScannerEnd();
}

TEST_F(ScannerLaunch, AtExactly60SecondsTheWaitGoesOn)
{
    Script(1, {"wait go", "listen", "ok", "ok", Info(none, 0, 0, false)});
    onPause = [this] {
        elapsed = std::chrono::seconds(60);
        Touch("go");
    };
    EXPECT_TRUE(Start({}));
    EXPECT_THAT(Traced(), Not(Contains(timeoutLine)));
    RunUntilEnd();
}

TEST_F(ScannerLaunch, APortReadInTheSamePassInWhichTheClockPasses60SecondsTracesTheTimeoutAndConnects)
{
    Script(1, {"wait go", "listen listening", "ok", "ok", Info(none, 0, 0, false)});
    PortWait portWait;
    // The start, the first pass without a port, and the second, before whose reading the port was written.
    portWait.now = [this, reading = 0]() mutable {
        return start + (++reading <= 2 ? std::chrono::seconds(0) : std::chrono::seconds(61));
    };
    portWait.startPauses = [this] {
        return [this] {
            Touch("go");
            WaitForFile("listening");
        };
    };
    scan = std::make_shared<ExternalAudioPluginScan>(portWait);
    EXPECT_TRUE(Start({}));
    EXPECT_THAT(Traced(), Contains(timeoutLine));
    RunUntilEnd();
}

TEST_F(ScannerLaunch, APortWhoseLow16BitsAreZeroCountsAsAScannerThatIsNotListeningYet)
{
    Script(1, {"word 65536", "touch written", "wait go", "listen", "ok", "ok", Info(none, 0, 0, false)});
    int pauses = 0;
    onPause = [&] {
        WaitForFile("written");
        if (++pauses == 3)
            Touch("go");
    };
    EXPECT_TRUE(Start({}));
    EXPECT_GE(pauses, 3);
    RunUntilEnd();
}

TEST_F(ScannerLaunch, OnlyTheLow16BitsOfAPortAreUsed)
{
    Script(1, {"word 65536", "touch written", "wait end"});
    onPause = [this] {
        WaitForFile("written");
        elapsed += std::chrono::seconds(61);
    };
    EXPECT_FALSE(Start({}));
    LetScannerEnd();
}

TEST_F(ScannerLaunch, APortAtWhichNobodyListensMakesStartScanFalseAndLeavesTheScannerRunning)
{
    Script(1, {"dead", "wait end"});
    EXPECT_FALSE(Start({a}));
    EXPECT_THAT(Traced(), Contains(::testing::StartsWith("Scan server's port: ")));
    EXPECT_THAT(Traced(), Not(Contains("Sent connection request\r\n")));
    LetScannerEnd();
}

TEST_F(ScannerLaunch, WithoutTheScannerProgramNothingIsStarted)
{
    zetcore::filesupport::commondirs::SetExecutableDir(folder.Wide());
    EXPECT_FALSE(Start({a}));
    EXPECT_THAT(Traced(), ::testing::ElementsAre("Writing trace volume, volume: 6\r\n"));
    EXPECT_EQ(Launches(), 0);
}

TEST_F(ScannerLaunch, AProgramThatTheSystemDoesNotStartMakesStartScanFalse)
{
    zetcore::filesupport::commondirs::SetExecutableDir(folder.Wide());
    zettesting::WriteAll(folder / std::filesystem::path(ScannerFileName()), "not a program");
    EXPECT_FALSE(Start({a}));
    EXPECT_FALSE(ExternalAudioPluginScanAccess::Process(*scan));
    EXPECT_THAT(Traced(), Not(Contains("Retrieve server's port\r\n")));
}

TEST_F(ScannerLaunch, EveryWayOutGivesUpTheLaunchLock)
{
    for (const bool works : {false, true}) {
        const int number = Launches() + 1;
        if (works)
            Script(number, {"listen", "ok", "ok", Info(none, 0, 0, false)});
        else
            Script(number, {"dead", "wait end"});
        EXPECT_EQ(Start({}), works);
        // A second host would wait two minutes for it.
        zetcore::filesupport::MemoryMappedFile other;
        const auto before = std::chrono::steady_clock::now();
        EXPECT_TRUE(
            other.Init("ZETAudioFilterScan2", 8, zetcore::filesupport::MemoryMappedFile::CreateLocked));
        EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(60));
        Touch("end");
    }
}

} // namespace
} // namespace zetaudiopluginhostui
