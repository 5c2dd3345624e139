// Plug-ins that share a helper process, which ends with the worker that has started it.
#include <gmock/gmock.h>

#include "ManagerFixture.h"

namespace {

using Strings = std::vector<std::string>;

class FairBlameForHelpers : public ManagerFixture, public testing::WithParamInterface<int>
{};

INSTANTIATE_TEST_SUITE_P(Workers, FairBlameForHelpers, testing::Values(1, 4),
                         [](const auto& test) { return std::to_string(test.param); });

TEST_P(FairBlameForHelpers, TheEndOfAHelperIsNotTheFaultOfThoseThatUseIt)
{
    SetSwitch("zetaudiofilterscan.Workers", std::to_string(GetParam()));
    environment["ZET_TEST_PLUGIN_WAIT"] = "50";
    Strings sharing, bad;
    for (const char* number : {"1", "2", "3", "4", "5", "6"})
        sharing.push_back(Install("bad/shares_helper", number + std::string("_shares")).string());
    // The worker that they crash may be the one that has started the helper.
    for (const char* number : {"2", "4", "6"})
        bad.push_back(Install("bad/crash_in_entry", number + std::string("_z_bad")).string());
    const ScanSummary scan = Scan({"--timeout", "20"});
    EXPECT_EQ(scan.exitStatus, 0) << scan.messages;
    EXPECT_EQ(scan.banned, bad);
    EXPECT_EQ(ListedPaths({"--enabled"}), sharing);
}

} // namespace
