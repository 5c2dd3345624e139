#include "scan/ScannerProgram.h"

#include <gmock/gmock.h>

namespace zetaudiopluginmanager {
namespace {

using testing::HasSubstr;

TEST(ScannerProgram, EachFailureNamesTheProgramAndWhatIsWrong)
{
    const std::wstring path = L"/opt/host/scanner";
    const auto describe = [&](ScannerProgramState state) { return DescribeFailedStart(state, path); };
    EXPECT_EQ(describe(ScannerProgramState::Missing), "there is no scanner program: /opt/host/scanner");
    EXPECT_THAT(describe(ScannerProgramState::NotExecutable),
                HasSubstr("may not be executed: /opt/host/scanner"));
    EXPECT_THAT(describe(ScannerProgramState::OtherSystem),
                HasSubstr("none for this system: /opt/host/scanner"));
    EXPECT_THAT(describe(ScannerProgramState::Startable), HasSubstr("where it listens"));
}

TEST(ScannerProgram, TheOneThatIsBuiltBesideThisOneCanBeStarted)
{
    EXPECT_EQ(LookAtScannerProgram(), ScannerProgramState::Startable)
        << testing::PrintToString(ScannerProgramPath());
}

} // namespace
} // namespace zetaudiopluginmanager
