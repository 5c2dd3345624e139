// A thousand random scans against a model: plug-ins of every kind, workers that finish in any order, a host
// that asks at any time, and a new scanner after each death. And such scans of chosen plug-ins.
#include <cstdint>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "testing/lookahead/SimulatedScan.h"

namespace zetaudiofilterscan {
namespace {

/// The number of the first seed by 50.
class LookAheadModel : public testing::TestWithParam<std::uint32_t>
{};

INSTANTIATE_TEST_SUITE_P(ThousandScans, LookAheadModel, testing::Range(0U, 20U));

TEST_P(LookAheadModel, EveryPluginOfARandomScanIsToldOnceWithTheRightVerdict)
{
    constexpr std::uint32_t seeds = 50;
    int idleEnds = 0, timesNotStarted = 0;
    for (std::uint32_t seed = GetParam() * seeds; seed < (GetParam() + 1) * seeds; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const SimulatedScan::Trouble trouble{seed % 7 == 1, seed % 5 == 2 ? 1 + seed % 4 : 100};
        SimulatedScan scan(seed, 1 + seed % 8, seed % 60, seed % 3 == 0, trouble);
        scan.Run();
        scan.Check();
        if (testing::Test::HasFailure())
            return;
        idleEnds += scan.Workers().idleEnds;
        timesNotStarted += scan.Workers().timesNotStarted;
    }
    EXPECT_GT(idleEnds, 0);
    EXPECT_GT(timesNotStarted, 0);
}

TEST(LookAheadWaits, NoPluginWaitsLongForWhatAnIdleWorkerHolds)
{
    for (const std::size_t workers : {2, 4, 8}) {
        SimulatedScan scan(workers, std::vector(8, PluginNature::HangsWhenHeld));
        scan.Run();
        scan.Check();
        EXPECT_EQ(scan.Workers().hangsEndured, 0) << workers;
        EXPECT_LT(scan.Workers().now, LookAhead::Time(SimulatedWorkers::entityLimit / 4))
            << "before any second try, with " << workers;
        EXPECT_THAT(scan.Notes(), testing::Contains(testing::HasSubstr("wait for something that it holds")));
    }
}

TEST(LookAheadWaits, IdleWorkersStayWhileNobodyTakesLong)
{
    SimulatedScan scan(4, std::vector(9, PluginNature::Good));
    scan.Run();
    scan.Check();
    EXPECT_THAT(scan.Notes(), testing::IsEmpty());
}

TEST(LookAheadProcessors, AreSharedWithOneWorkerOnlyAndNeverBeforeAVerdict)
{
    for (const std::size_t workers : {1, 4}) {
        SimulatedScan scan(workers, std::vector(7, PluginNature::NeedsTwoProcessors));
        scan.Run();
        scan.Check();
        EXPECT_EQ(scan.Workers().timesOnOneProcessor > 0, workers == 1);
        EXPECT_EQ(scan.Scanners(), 1U) << "nobody is banned";
    }
}

} // namespace
} // namespace zetaudiofilterscan
