// Single steps. Whole scans are in the model's tests.
#include "supervisor/lookahead/LookAhead.h"

#include <set>
#include <variant>

#include <gmock/gmock.h>

namespace zetaudiofilterscan {
namespace {

using Time = LookAhead::Time;

/// Two workers, and a list of two.
class LookAheadStep : public testing::Test
{
  protected:
    LookAhead::Start Begin(Time now = {})
    {
        return std::get<LookAhead::Start>(ahead.NextAction(now).value());
    }
    LookAhead::Worker Kill(Time now)
    {
        return std::get<LookAhead::Kill>(ahead.NextAction(now).value()).worker;
    }

    const LookAhead::Settings settings{.workers = 2, .entityLimit = std::chrono::seconds(1)};
    LookAhead ahead{settings, 2};
};

TEST_F(LookAheadStep, TheProcessOfASecondTryEndsWithIt)
{
    const auto slow = Begin();
    const auto other = Begin();
    ahead.Passed(other.worker, {}, false);
    const Time later = Time{} + settings.entityLimit / 4;
    const auto second = Begin(later);
    ASSERT_EQ(second.entity, slow.entity);
    ahead.Passed(second.worker, {}, true);
    EXPECT_THAT((std::set{Kill(later), Kill(later)}), testing::ElementsAre(slow.worker, second.worker));
    EXPECT_FALSE(ahead.NextAction(later));
}

TEST_F(LookAheadStep, WhatAWorkerAtRestHoldsIsCompany)
{
    const auto first = Begin();
    const auto second = Begin();
    ahead.Passed(second.worker, {}, true);
    ahead.NotBegun(first.worker);
    const auto again = Begin();
    ASSERT_EQ(again.entity, first.entity);
    LookAhead::TrialFailure refusal;
    refusal.isWorkersWord = true;
    ahead.Failed(again.worker, refusal);
    EXPECT_EQ(ahead.Culprits().size(), 0U) << "it may have refused because of the other one";
}

} // namespace
} // namespace zetaudiofilterscan
