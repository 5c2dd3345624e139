#include "WorkerPrivileges.h"

#include <cerrno>
#include <csignal>

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zetaudiofilterscan {
namespace {

bool IsRefused(long result)
{
    return result == -1 && errno == EPERM;
}

/// Runs in a process of its own, which may not end its parent any more. Signal 0 is sent to nobody, but is
/// refused like any other.
int FirstCallThatIsWrong(pid_t parent)
{
    siginfo_t info{};
    info.si_code = SI_QUEUE;
    if (RefuseToEnd(static_cast<std::uint64_t>(parent)))
        return 1;
    if (!IsRefused(::kill(parent, 0)))
        return 2;
    if (!IsRefused(::kill(-::getpgid(parent), 0)))
        return 3;
    if (!IsRefused(::kill(-1, 0)))
        return 4;
    if (!IsRefused(::syscall(SYS_tgkill, parent, parent, 0)))
        return 5;
    if (!IsRefused(::syscall(SYS_tkill, parent, 0)))
        return 6;
    if (!IsRefused(::syscall(SYS_rt_sigqueueinfo, parent, 0, &info)))
        return 7;
    if (!IsRefused(::syscall(SYS_rt_tgsigqueueinfo, parent, parent, 0, &info)))
        return 8;
    if (!IsRefused(::syscall(SYS_pidfd_open, parent, 0)))
        return 9;
    return ::kill(::getpid(), 0) == 0 ? 0 : 10;
}

TEST(RefuseToEnd, RefusesEveryCallThatWouldReachTheProcess)
{
    const pid_t parent = ::getpid();
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(FirstCallThatIsWrong(parent));
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0) << "the number of the call that was wrong";
}

} // namespace
} // namespace zetaudiofilterscan
