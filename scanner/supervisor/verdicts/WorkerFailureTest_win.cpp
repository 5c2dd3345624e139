#include "supervisor/verdicts/WorkerFailure.h"

#include <gtest/gtest.h>

#include <windows.h>

#include "supervisor/workers/ProcessEnd.h"

namespace zetaudiofilterscan {
namespace {

using zetaudiopluginhost::ScanPhase;

TEST(WorkerFailure, NamesTheException)
{
    const WorkerFailure failure{
        WorkerFailure::Kind::Crashed, EXCEPTION_ACCESS_VIOLATION, ScanPhase::Load, {}, {}};
    EXPECT_EQ(DescribeFailure(failure, ""), "crashed (access violation) while being loaded");
    EXPECT_EQ(CrashText(EXCEPTION_STACK_OVERFLOW), "stack overflow");
    EXPECT_EQ(CrashText(EXCEPTION_INT_DIVIDE_BY_ZERO), "arithmetic error");
    EXPECT_EQ(CrashText(0x40000015), "aborted");
    EXPECT_EQ(CrashText(0xE06D7363), "uncaught exception");
    EXPECT_EQ(CrashText(0xC0001234), "exception 0xc0001234");
}

} // namespace
} // namespace zetaudiofilterscan
