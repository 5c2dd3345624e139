#include "ScannerFixture.h"

namespace zetaudiofilterscan {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

// The fixture proves, too, that no process of the scanner's is left.
class PluginThatLeavesAProcess : public ScannerFixture
{
  protected:
    void Scan(ScannerClient& client)
    {
        // After the first plug-in, which loads nothing, all of the scanner's own processes are there.
        client.StartScan(
            {LocatorOf(zettesting::MakeTextModule(folder.Path())), Plugin("bad/leaves_process")});
        ASSERT_TRUE(client.GetScanInfo().continues);
        ASSERT_TRUE(client.ScanOneEntity().Succeeded());
        const auto before = RunningProcesses().size();
        ASSERT_TRUE(client.GetScanInfo().continues);
        ASSERT_TRUE(client.ScanOneEntity().Succeeded());
        ASSERT_EQ(RunningProcesses().size(), before + 1);
    }
};

TEST_F(PluginThatLeavesAProcess, HasItEndedWithTheConnection)
{
    ScannerClient client(prefs);
    Scan(client);
    client.Close();
    client.Process().Wait();
    EXPECT_THAT(LeftProcesses(), IsEmpty());
}

TEST_F(PluginThatLeavesAProcess, HasItEndedWhenTheSupervisorIsKilled)
{
    ScannerClient client(prefs);
    Scan(client);
    client.Process().Kill();
    client.Process().Wait();
    EXPECT_THAT(LeftProcesses(), IsEmpty());
}

class Displays : public ScannerFixture
{
  protected:
    /// The lines that a plug-in prints about its environment.
    std::string Told(const ScannerClient::Environment& environment)
    {
        ScanAll(prefs, {Plugin("bad/tells_display")}, environment);
        return ScanLogs();
    }
};

TEST_F(Displays, OfNobodyAreWhatPluginsFindWhereTheHostHasNone)
{
    EXPECT_THAT(Told({{"DISPLAY", ""}}),
                AllOf(HasSubstr("\nDISPLAY=none;"), HasSubstr("WAYLAND_DISPLAY=/dev/null;")));
}

TEST_F(Displays, OfTheHostAreThePluginsToo)
{
    EXPECT_THAT(Told({{"DISPLAY", ":77"}}),
                AllOf(HasSubstr("\nDISPLAY=:77;"), HasSubstr("WAYLAND_DISPLAY=/dev/null;")));
    EXPECT_THAT(Told({{"WAYLAND_DISPLAY", "wayland-77"}}),
                AllOf(HasSubstr("\nDISPLAY=none;"), HasSubstr("WAYLAND_DISPLAY=wayland-77;")));
}

TEST_F(Displays, CanBeHidden)
{
    WriteDebugDatabase("zetaudiofilterscan.HideDisplay = true\n");
    EXPECT_THAT(Told({{"DISPLAY", ":77"}, {"WAYLAND_DISPLAY", "wayland-77"}}),
                AllOf(HasSubstr("\nDISPLAY=none;"), HasSubstr("WAYLAND_DISPLAY=/dev/null;")));
}

} // namespace
} // namespace zetaudiofilterscan
