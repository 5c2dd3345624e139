#include "supervisor/verdicts/WorkerFailure.h"

#include <gtest/gtest.h>

namespace zetaudiofilterscan {
namespace {

using zetaudiopluginhost::ScanPhase;
using Kind = WorkerFailure::Kind;

WorkerFailure Failure(Kind kind, long long code, ScanPhase phase, std::string text = {})
{
    return {kind, code, phase, std::move(text), std::chrono::seconds(60)};
}

struct Case
{
    WorkerFailure failure;
    const char* lastLine;
    std::string expected;
};

TEST(WorkerFailure, SaysWhatHappenedAndWhen)
{
    const Case cases[] = {
        {Failure(Kind::Exited, 0, ScanPhase::Entry), "",
         "ended the process (exit code 0) in its entry function"},
        {Failure(Kind::Exited, -1, ScanPhase::None), "",
         "ended the process (exit code -1) while being scanned"},
        {Failure(Kind::TookTooLong, 0, ScanPhase::Unload), "",
         "took longer than 60 seconds while being unloaded"},
        {Failure(Kind::TookTooLong, 0, ScanPhase::Create), "please wait",
         "took longer than 60 seconds while a component was being created; its last output: please wait"},
        {Failure(Kind::ChannelLost, 0, ScanPhase::Unload), "",
         "closed files of the process that had loaded it"},
        {Failure(Kind::WrongAnswer, 0, ScanPhase::Query, "cut off: phase"), "",
         "damaged the process that had loaded it (cut off: phase)"},
        {Failure(Kind::Misbehaved, 0, ScanPhase::Query, "threw an exception"), "", "threw an exception"},
        {Failure(Kind::Misbehaved, 0, ScanPhase::Query), "", "misbehaved while being asked what it is"},
        {Failure(Kind::Misbehaved, 0, ScanPhase::Close), "", "misbehaved while being closed"},
    };
    for (const Case& one : cases)
        EXPECT_EQ(DescribeFailure(one.failure, one.lastLine), one.expected);
}

TEST(WorkerFailure, SaysSecondsAsPeopleDo)
{
    using std::chrono::milliseconds;
    EXPECT_EQ(SecondsText(milliseconds(60000)), "60 seconds");
    EXPECT_EQ(SecondsText(milliseconds(1000)), "1 second");
    EXPECT_EQ(SecondsText(milliseconds(250)), "0.25 seconds");
    EXPECT_EQ(SecondsText(milliseconds(1500)), "1.5 seconds");
    EXPECT_EQ(SecondsText(milliseconds(2005)), "2.005 seconds");
}

} // namespace
} // namespace zetaudiofilterscan
