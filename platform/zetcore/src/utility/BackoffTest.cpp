#include <zetcore/utility/Backoff.h>

#include <vector>

#include <gmock/gmock.h>

namespace zetcore::utility {
namespace {

TEST(Backoff, PausesGrowUpToTwoMilliseconds)
{
    Backoff backoff;
    std::vector<long long> pauses;
    std::chrono::microseconds sum{0};
    const auto start = std::chrono::steady_clock::now();
    for (int call = 0; call < 8; ++call) {
        pauses.push_back(backoff.Next().count());
        sum += backoff.Next();
        backoff();
    }
    EXPECT_THAT(pauses, ::testing::ElementsAre(50, 100, 200, 400, 800, 1600, 2000, 2000));
    EXPECT_GE(std::chrono::steady_clock::now() - start, sum);
}

} // namespace
} // namespace zetcore::utility
