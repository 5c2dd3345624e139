#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "supervisor/process/HostProcess.h"
#include "supervisor/process/ProcessIdentity.h"

namespace zetaudiofilterscan {
namespace {

TEST(ProcessIdentityTestPosix, AnEndedProcessThatNobodyHasAskedAboutIsGone)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(0);
    siginfo_t ended{};
    ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOWAIT), 0);
    EXPECT_FALSE(IdentifyProcess(static_cast<std::uint64_t>(child)));
    ::waitpid(child, nullptr, 0);
}

TEST(ProcessIdentityTestPosix, AProgramMayBearAnyName)
{
    const auto number = static_cast<std::uint64_t>(::getpid());
    const auto before = IdentifyProcess(number);
    char name[16] = "";
    ASSERT_EQ(::prctl(PR_GET_NAME, name), 0);
    ASSERT_EQ(::prctl(PR_SET_NAME, ") Z (1 2\n3)"), 0);
    EXPECT_EQ(IdentifyProcess(number), before);
    ::prctl(PR_SET_NAME, name);
    EXPECT_TRUE(before);
}

TEST(ProcessIdentityTestPosix, TheHostBeganBeforeItsScanner)
{
    const auto host = IdentifyHost(HostProcessNumber());
    const auto own = IdentifyProcess(static_cast<std::uint64_t>(::getpid()));
    ASSERT_TRUE(host && own);
    EXPECT_NE(host->number, own->number);
    EXPECT_LE(host->start, own->start);
    EXPECT_EQ(IdentifyProcess(host->number), host);
}

} // namespace
} // namespace zetaudiofilterscan
