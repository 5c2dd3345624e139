// Plug-ins are scanned ahead of the host by several workers, while a process stands still.
#include <csignal>

#include "ScannerFixture.h"
#include "StopPipe_posix.h"

namespace zetaudiofilterscan {
namespace {

using testing::HasSubstr;
using testing::Not;
using zetaudiofilterhost::PluginLocator;

class SeveralWorkersPosix : public ScannerFixture
{
  protected:
    SeveralWorkersPosix() : ScannerFixture(4) {}

    const StopPipe pipe{folder / "pipe"};
};

TEST_F(SeveralWorkersPosix, AScannerThatIsLateToEndIsNotTakenForOneThatWasKilled)
{
    WriteDebugDatabase("zetaudiofilterscan.EntityTimeoutSeconds = 500\n");
    const std::vector<PluginLocator> locators{Plugin("bad/loops_forever"), Plugin("bad/hangs_on_load")};
    ScannerClient first(prefs, {{"ZET_FAULT", "supervisor.closed:1:stop"}, {"ZET_FAULT_PIPE", pipe.Name()}});
    first.StartScan(locators);
    ASSERT_EQ(first.GetScanInfo().locator.GetPath(), L"") << "it waits";
    first.Close();
    ASSERT_NE(pipe.WaitForStop(), 0);
    ScannerClient second(prefs);
    second.StartScan(locators);
    EXPECT_EQ(second.GetScanInfo().locator.GetPath(), L"") << "one worker would name the first";
    EXPECT_THAT(ScanLogs(), Not(HasSubstr("killed")));
    first.Process().Kill();
    first.Process().Wait();
    second.Close();
    second.Process().Wait();
}

TEST_F(SeveralWorkersPosix, AKilledSupervisorTakesWhatMakesCopiesAlongThoughItStandsStill)
{
    WriteDebugDatabase("zetaudiofilterscan.EntityTimeoutSeconds = 500\n");
    ScannerClient client(prefs,
                         {{"ZET_FAULT", "worker.makes-copies:1:stop"}, {"ZET_FAULT_PIPE", pipe.Name()}});
    client.StartScan({Plugin("bad/loops_forever"), Plugin("bad/hangs_on_load")});
    const int maker = pipe.WaitForStop();
    ASSERT_NE(maker, 0);
    client.Process().Kill();
    client.Process().Wait();
    EXPECT_THAT(LeftProcesses(), testing::IsEmpty());
    if (HasFailure())
        ::kill(maker, SIGKILL);
}

} // namespace
} // namespace zetaudiofilterscan
