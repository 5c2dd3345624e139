// A scanner is launched, or cannot be launched.
#include "scan/launch/ScannerLauncher.h"

#include <gmock/gmock.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/string/Utf.h>
#include <zettesting/ScopedFaults.h>

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
    static std::string ProgramPath() { return ProgramIn(std::filesystem::absolute(ZET_FAKE_SCANNER_FOLDER)); }
    static std::string ProgramIn(const std::filesystem::path& programFolder)
    {
        return zetcore::string::UTF16to8(zettesting::ToWide(programFolder / ScannerFileName()));
    }
    /// Lets the scanner end in the first pause. There must be no second pause.
    void ExpectNoPauseAfterTheEnd()
    {
        onPause = [this, pauses = 0]() mutable {
            WaitUntil([this] {
                return FindScannerProcessEnd(ExternalAudioPluginScanAccess::Process(*scan)).has_value();
            });
            if (++pauses == 1)
                return;
            ADD_FAILURE() << "the wait goes on although the scanner has ended";
            elapsed += std::chrono::seconds(61);
        };
    }
    /// A failed start leaves its process behind. No StopScan follows, so the test lets the process end.
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
    const PluginLocator none{};
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
    EXPECT_EQ(elapsed, std::chrono::milliseconds(60500));
    EXPECT_EQ(scan->StartFailure(),
              "The scanner program did not tell within 60 seconds where it listens: " + ProgramPath());
    EXPECT_THAT(Traced(), Contains(timeoutLine));
    // The process was not ended, and its handle was not given up.
    EXPECT_TRUE(ExternalAudioPluginScanAccess::Process(*scan));
    EXPECT_TRUE(reports.empty());
    LetScannerEnd();
}

TEST_F(ScannerLaunch, AScannerThatEndsBeforeItHasToldItsPortEndsTheWaitAtOnce)
{
    Script(1, {"die"});
    ExpectNoPauseAfterTheEnd();
    EXPECT_FALSE(Start({a}));
    EXPECT_THAT(Traced(), Not(Contains(timeoutLine)));
    EXPECT_EQ(scan->StartFailure(),
              "The scanner program ended with exit status 1 before it told where it listens: " +
                  ProgramPath());
    EXPECT_TRUE(AnyTraced(scan->StartFailure().value()));
}

TEST_F(ScannerLaunch, APortThatAScannerHasToldIsUsedAlthoughItEndsWhileItIsLookedAt)
{
    Script(1, {"wait go", "dead", "die"});
    PortWait portWait;
    portWait.findEnd = [this](ScannerProcess process) {
        Touch("go");
        WaitUntil([process] { return FindScannerProcessEnd(process).has_value(); });
        return FindScannerProcessEnd(process);
    };
    scan = std::make_shared<ExternalAudioPluginScan>(portWait);
    EXPECT_FALSE(Start({a}));
    EXPECT_THAT(Traced(), Contains(::testing::StartsWith("Scan server's port: ")));
    EXPECT_THAT(scan->StartFailure(),
                ::testing::Optional(::testing::StartsWith("The scanner does not answer at port ")));
}

TEST_F(ScannerLaunch, AStartThatWorksLeavesNoFailureOfTheOneBefore)
{
    Script(1, {"die"});
    Script(2, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    ExpectNoPauseAfterTheEnd();
    EXPECT_FALSE(Start({a}));
    EXPECT_TRUE(scan->StartFailure());
    onPause = [] {};
    EXPECT_TRUE(Start({}));
    EXPECT_FALSE(scan->StartFailure());
    RunUntilEnd();
}

TEST_F(ScannerLaunch, AStartThatThrowsLeavesNoFailureOfTheOneBefore)
{
    Script(1, {"die"});
    ExpectNoPauseAfterTheEnd();
    EXPECT_FALSE(Start({a}));
    zettesting::WriteAll(ResultFile(), "of an earlier scan");
    const zettesting::ScopedFaults faults("delete." + ResultFile().filename().string() + ":1:denied");
    EXPECT_THROW(Start({a}), zetcore::filesupport::file_exception);
    EXPECT_FALSE(scan->StartFailure());
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
    // The clock is read at the start, in the first pass, which finds no port, and in the second, which finds
    // one.
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
    Script(1, {"high-bits", "listen", "ok", "ok", Info(none, 0, 0, false)});
    EXPECT_TRUE(Start({}));
    RunUntilEnd();
    EXPECT_EQ(Launches(), 1);
}

TEST_F(ScannerLaunch, APortThatComesAfterItsWordWasReadInTheLastPassIsNotUsed)
{
    Script(1, {"wait go", "listen listening", "hold"});
    PortWait portWait;
    // The clock is read at the start, in a pass without a port, and in a pass in which the port comes only
    // after the word has been read.
    portWait.now = [this, reading = 0]() mutable {
        if (++reading <= 2)
            return start;
        Touch("go");
        WaitForFile("listening");
        return start + std::chrono::seconds(61);
    };
    scan = std::make_shared<ExternalAudioPluginScan>(portWait);
    EXPECT_FALSE(Start({}));
    EXPECT_THAT(Traced(), Contains(timeoutLine));
    EXPECT_THAT(Traced(), Not(Contains(::testing::StartsWith("Scan server's port: "))));
}

TEST(ScannerBlock, TheTraceVolumeIsLeftBeforeTheOldPortIsCleared)
{
    struct Words
    {
        void Exchange(std::size_t index, std::uint32_t value) { exchanged.emplace_back(index, value); }
        std::vector<std::pair<std::size_t, std::uint32_t>> exchanged;
    } words;
    PrepareForLaunch(words, -3);
    EXPECT_THAT(words.exchanged, ::testing::ElementsAre(std::pair(1U, 0xFFFFFFFDU), std::pair(0U, 0U)));
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
    EXPECT_EQ(scan->StartFailure(), "There is no scanner program: " + ProgramIn(folder.Path()));
    EXPECT_EQ(Launches(), 0);
}

TEST_F(ScannerLaunch, AProgramThatTheSystemDoesNotStartMakesStartScanFalse)
{
    zetcore::filesupport::commondirs::SetExecutableDir(folder.Wide());
    zettesting::WriteAll(folder / std::filesystem::path(ScannerFileName()), "not a program");
    EXPECT_FALSE(Start({a}));
    EXPECT_FALSE(ExternalAudioPluginScanAccess::Process(*scan));
    EXPECT_THAT(Traced(), Not(Contains("Retrieve server's port\r\n")));
    EXPECT_THAT(scan->StartFailure(),
                ::testing::Optional(::testing::StartsWith("Cannot start the scanner program \"" +
                                                          ProgramIn(folder.Path()) + "\": ")));
}

/// A way to make a launch end.
struct WayOut
{
    const char* name;
    std::vector<std::string> script;
    /// The program: the fake scanner, none, or a text file.
    enum
    {
        Fake,
        None,
        Text
    } program;
    bool pastTheLimit;
    bool started;
};

void PrintTo(const WayOut& wayOut, std::ostream* stream)
{
    *stream << wayOut.name;
}

class ScannerLaunchEnds : public ScannerLaunch, public ::testing::WithParamInterface<WayOut>
{};

TEST_P(ScannerLaunchEnds, EveryWayOutGivesUpTheLaunchLock)
{
    Script(1, GetParam().script);
    if (GetParam().program != WayOut::Fake)
        zetcore::filesupport::commondirs::SetExecutableDir(folder.Wide());
    if (GetParam().program == WayOut::Text)
        zettesting::WriteAll(folder / std::filesystem::path(ScannerFileName()), "not a program");
    onPause = [this] {
        if (GetParam().pastTheLimit)
            elapsed += std::chrono::seconds(61);
    };
    EXPECT_EQ(Start({}), GetParam().started);
    // If the lock were still held, another host would wait for it and fail in the end.
    zetcore::filesupport::MemoryMappedFile other;
    EXPECT_TRUE(other.Init("ZETAudioFilterScan2", 8, zetcore::filesupport::MemoryMappedFile::CreateLocked));
    Touch("end");
}

INSTANTIATE_TEST_SUITE_P(
    , ScannerLaunchEnds,
    ::testing::Values(WayOut{"Connected", {"listen", "hold"}, WayOut::Fake, false, true},
                      WayOut{"NobodyListens", {"dead", "wait end"}, WayOut::Fake, false, false},
                      WayOut{"NoPortInTime", {"none", "wait end"}, WayOut::Fake, true, false},
                      WayOut{"EndedFirst", {"die"}, WayOut::Fake, false, false},
                      WayOut{"NoProgram", {}, WayOut::None, false, false},
                      WayOut{"NotStarted", {}, WayOut::Text, false, false}),
    [](const auto& test) { return std::string(test.param.name); });

} // namespace
} // namespace zetaudiopluginhostui
