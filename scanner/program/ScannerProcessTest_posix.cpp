#include <sched.h>

#include "ScannerFixture.h"

namespace zetaudiofilterscan {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using zetaudiofilterhost::PluginLocator;

// The fixture proves, too, that no process of the scanner's is left.
class PluginThatLeavesAProcess : public ScannerFixture
{
  protected:
    void Scan(ScannerClient& client)
    {
        // After the first file, which is not loaded, all of the scanner's own processes are there, and they
        // are at the second one at most.
        client.StartScan({LocatorOf(zettesting::MakeTextModule(folder.Path())),
                          LocatorOf(zettesting::MakeEmptyModule(folder.Path())),
                          Plugin("bad/leaves_process")});
        ASSERT_TRUE(client.GetScanInfo().continues);
        ASSERT_TRUE(client.ScanOneEntity().Succeeded());
        const auto before = RunningProcesses().size();
        for (int file = 0; file < 2; ++file) {
            ASSERT_TRUE(client.GetScanInfo().continues);
            ASSERT_TRUE(client.ScanOneEntity().Succeeded());
        }
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

/// A plug-in that fails when it may use fewer processors than this program.
class Processors : public ScannerFixture
{
  protected:
    explicit Processors(int workersAtOnce = 1) : ScannerFixture(workersAtOnce)
    {
        cpu_set_t processors;
        if (::sched_getaffinity(0, sizeof processors, &processors) == 0)
            own = CPU_COUNT(&processors);
    }
    void Scan(const std::vector<PluginLocator>& locators)
    {
        const WholeScan scan =
            ScanAll(prefs, locators, {{"ZET_TEST_PLUGIN_PROCESSORS", std::to_string(own)}});
        EXPECT_THAT(scan.failed, IsEmpty());
        EXPECT_THAT(scan.results, HasSubstr("Needs Processors"));
    }

    int own = 1;
};

class ProcessorsOfSeveral : public Processors
{
  protected:
    ProcessorsOfSeveral() : Processors(4) {}
};

TEST_F(Processors, AreOneAfterAnotherPluginAndAllWhereAVerdictIsFound)
{
    Scan({Plugin("good/vst2_effect"), Plugin("bad/needs_processors")});
    EXPECT_THAT(ScanLogs(),
                own > 1 ? testing::Matcher<std::string>(AllOf(HasSubstr("It is tried once more, alone"),
                                                              HasSubstr("passed when it was alone")))
                        : testing::Matcher<std::string>(""));
}

TEST_F(Processors, AreAllThereForTheFirstPlugin)
{
    Scan({Plugin("bad/needs_processors")});
    EXPECT_EQ(ScanLogs(), "");
}

TEST_F(ProcessorsOfSeveral, AreAllThere)
{
    Scan({Plugin("good/vst2_effect"), Plugin("good/vst2_synth"), Plugin("good/vst2_main_entry"),
          Plugin("good/vst2_named_when_open"), Plugin("good/vst3_single_file"),
          Plugin("bad/needs_processors")});
    // On a slow machine there are notes of workers that are ended while they rest.
    EXPECT_THAT(ScanLogs(), testing::Not(HasSubstr("It is tried once more")));
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
