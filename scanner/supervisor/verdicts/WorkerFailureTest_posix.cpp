#include "supervisor/verdicts/WorkerFailure.h"

#include <csignal>

#include <gtest/gtest.h>

#include "supervisor/workers/ProcessEnd.h"

namespace zetaudiofilterscan {
namespace {

using zetaudiopluginhost::ScanPhase;

TEST(WorkerFailure, NamesTheSignal)
{
    const WorkerFailure failure{WorkerFailure::Kind::Crashed, SIGSEGV, ScanPhase::Load, {}, {}};
    EXPECT_EQ(DescribeFailure(failure, ""), "crashed (segmentation fault) while being loaded");
    EXPECT_EQ(CrashText(SIGABRT), "aborted");
    EXPECT_EQ(CrashText(SIGBUS), "bus error");
    EXPECT_EQ(CrashText(SIGFPE), "arithmetic error");
    EXPECT_EQ(CrashText(SIGUSR1), "signal " + std::to_string(SIGUSR1));
}

} // namespace
} // namespace zetaudiofilterscan
