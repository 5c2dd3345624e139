#include "supervisor/workers/WorkerCopier_posix.h"

#include <chrono>
#include <fstream>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <tuple>

#include <csignal>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <zetcore/utility/Backoff.h>
#include <zettesting/HostFixture.h>
#include <zettesting/Patience.h>

#include "supervisor/workers/WorkerProgram_posix.h"
#include "testing/ProcessStat_posix.h"
#include "testing/StopPipe_posix.h"

namespace zetaudiofilterscan {
namespace {

using zetcore::filesupport::Descriptor;
using zettesting::ScopedEnvironment;

/// This process stands for the supervisor. One of the others stops itself at a place.
class WorkerCopierTest : public zettesting::HostFixture
{
  protected:
    explicit WorkerCopierTest(const char* place)
        : pipeName("ZET_FAULT_PIPE", pipe.Name()), fault("ZET_FAULT", std::string(place) + ":1:stop"),
          copier(std::in_place)
    {
        // The supervisor asks for that when it starts.
        ::prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0);
        std::tie(channel, itsChannel) = MakeChannel(SOCK_STREAM);
        EXPECT_TRUE(zettesting::Becomes([this] { return copier->IsReady(); }));
    }
    ~WorkerCopierTest() override
    {
        // The worker ends with its channel.
        channel.Close();
        itsChannel.Close();
        copier.reset();
        while (::waitpid(-1, nullptr, 0) > 0) {
        }
        ::prctl(PR_SET_CHILD_SUBREAPER, 0, 0, 0, 0);
    }

    std::optional<pid_t> Copy() { return copier->Copy({STDERR_FILENO, itsChannel.Get(), page.Get()}); }

    const StopPipe pipe{folder / "stop"};
    const ScopedEnvironment pipeName, fault;
    const Descriptor page{::memfd_create("page", MFD_CLOEXEC)};
    Descriptor channel, itsChannel;
    std::optional<WorkerCopier> copier;
};

class LateCopy : public WorkerCopierTest
{
  protected:
    LateCopy() : WorkerCopierTest("worker.copy") {}
};

TEST_F(LateCopy, IsNotTakenForTheNextOne)
{
    EXPECT_EQ(Copy(), std::nullopt) << "it stands still, and that lasts too long";
    const int maker = pipe.WaitForStop();
    ASSERT_NE(maker, 0);
    ::kill(maker, SIGCONT);
    // It makes the copy now and cannot say so any more.
    bool isReady = false;
    EXPECT_TRUE(zettesting::Becomes([&] {
        isReady = copier->IsReady();
        return isReady || StatOf(maker).state == 'Z';
    }));
    EXPECT_FALSE(isReady);
    EXPECT_EQ(Copy(), std::nullopt);
}

class SlowAdoption : public WorkerCopierTest
{
  protected:
    SlowAdoption() : WorkerCopierTest("worker.between") {}

    /// 0 when there is none.
    static int ChildOf(int parent)
    {
        std::ifstream file("/proc/" + std::to_string(parent) + "/task/" + std::to_string(parent) +
                           "/children");
        int child = 0;
        file >> child;
        return child;
    }
};

TEST_F(SlowAdoption, IsWaitedForBeforeThereIsACopy)
{
    // The process that starts the copy may end only when the copy waits for something.
    std::thread goOn([this] {
        const int between = pipe.WaitForStop();
        zettesting::Becomes([&] { return between == 0 || StatOf(ChildOf(between)).state == 'S'; });
        if (between != 0)
            ::kill(between, SIGCONT);
    });
    const std::optional<pid_t> copy = Copy();
    const int parent = copy ? StatOf(*copy).parent : 0;
    goOn.join();
    ASSERT_TRUE(copy);
    EXPECT_EQ(parent, ::getpid()) << "a worker that is not the supervisor's child ends";
    EXPECT_NE(StatOf(*copy).state, 'Z');
}

} // namespace
} // namespace zetaudiofilterscan
