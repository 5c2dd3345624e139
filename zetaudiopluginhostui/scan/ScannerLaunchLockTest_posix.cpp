#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "testing/ExternalScanFixture.h"

namespace zetaudiopluginhostui {
namespace {

class ScannerLaunchLock : public ExternalScanFixture
{
  protected:
    /// As another program tries it.
    bool IsLocked() const
    {
        const int block = ::open((folder / "runtime" / "ZETAudioFilterScan2").c_str(), O_RDWR | O_CLOEXEC);
        EXPECT_GE(block, 0);
        const bool locked = ::flock(block, LOCK_EX | LOCK_NB) != 0;
        ::close(block);
        return locked;
    }
};

TEST_F(ScannerLaunchLock, IsHeldWhileThePortIsWaitedForAndNotWhileTheScanRuns)
{
    Script(1, {"wait go", "listen", "ok", "touch connected", "hold"});
    PortWait portWait;
    bool held = false;
    portWait.startPauses = [&] {
        held = IsLocked();
        Touch("go");
        return PortWait::Pause(zetcore::utility::Backoff());
    };
    scan = std::make_shared<ExternalAudioPluginScan>(portWait);
    ASSERT_TRUE(Start({}));
    EXPECT_TRUE(held);
    WaitForFile("connected");
    EXPECT_FALSE(IsLocked());
}

} // namespace
} // namespace zetaudiopluginhostui
