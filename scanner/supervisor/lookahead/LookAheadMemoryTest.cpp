// Tests that what was found ahead of the host takes bounded memory.
#include <utility>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "supervisor/lookahead/LookAhead.h"

namespace zetaudiofilterscan {
namespace {

using Time = LookAhead::Time;

/// A list of good ones, of which nobody is told unless the test says so.
class LookAheadMemory : public testing::Test
{
  protected:
    static constexpr std::size_t most = 5;

    LookAheadMemory()
    {
        settings.workers = 2;
        settings.mostRecords = most;
    }

    /// Each that begins passes, with so many records. Returns how many there were.
    std::size_t PassAll(LookAhead& ahead, std::size_t records) const
    {
        std::size_t passed = 0;
        for (std::vector<LookAhead::Worker> atWork;; atWork.clear()) {
            while (const auto action = ahead.NextAction(Time{}))
                atWork.push_back(std::get<LookAhead::Start>(*action).worker);
            if (atWork.empty())
                return passed;
            for (const LookAhead::Worker worker : atWork) {
                zetaudiopluginhost::ScanOutcome outcome;
                outcome.infos.resize(records);
                ahead.Passed(worker, std::move(outcome), true);
                ++passed;
            }
        }
    }

    static void Tell(LookAhead& ahead, std::size_t count)
    {
        for (std::size_t told = 0; told < count; ++told) {
            ASSERT_TRUE(ahead.AnnounceNext(Time{}));
            ASSERT_TRUE(ahead.TakeAnswer());
        }
    }

    LookAhead::Settings settings;
};

TEST_F(LookAheadMemory, HoldsNoMoreThanItMayUntilTheHostAsks)
{
    for (const std::size_t records : {0, 1}) {
        LookAhead ahead(settings, 100);
        // The plug-ins that workers are at are counted on top.
        EXPECT_EQ(PassAll(ahead, records), most + 1);
        EXPECT_EQ(PassAll(ahead, records), 0U);
        Tell(ahead, 1);
        EXPECT_EQ(PassAll(ahead, records), 0U) << "there are as many as may be";
        Tell(ahead, 3);
        EXPECT_EQ(PassAll(ahead, records), 4U);
        Tell(ahead, most + 1);
        EXPECT_FALSE(ahead.IsOver());
    }
}

TEST_F(LookAheadMemory, CountsTheRecordsOfOnesThatHoldMany)
{
    LookAhead ahead(settings, 100);
    EXPECT_EQ(PassAll(ahead, 3), 2U);
    Tell(ahead, 1);
    EXPECT_EQ(PassAll(ahead, 3), 2U) << "three are left, so that there is room";
}

} // namespace
} // namespace zetaudiofilterscan
