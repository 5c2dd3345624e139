#include <zetcore/utility/Backoff.h>

#include <algorithm>

#include <gtest/gtest.h>

namespace zetcore::utility {
namespace {

TEST(Backoff, PausesAreAnEighthOfTheWaitUpToTwoMilliseconds)
{
    Backoff backoff;
    std::chrono::microseconds sum{0};
    const auto start = std::chrono::steady_clock::now();
    for (int call = 0; call < 50; ++call) {
        const auto expected =
            std::clamp(sum / 8, std::chrono::microseconds(50), std::chrono::microseconds(2000));
        ASSERT_EQ(backoff.Next(), expected) << "pause " << call;
        sum += backoff.Next();
        backoff();
    }
    EXPECT_EQ(backoff.Next(), std::chrono::microseconds(2000));
    EXPECT_GE(std::chrono::steady_clock::now() - start, sum);
}

} // namespace
} // namespace zetcore::utility
