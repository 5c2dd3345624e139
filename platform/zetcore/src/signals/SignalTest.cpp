#include <zetcore/signals/Signal.h>

#include <vector>

#include <gmock/gmock.h>

namespace zetcore::signals {
namespace {

TEST(Signal, SlotsRunInTheOrderOfConnection)
{
    Signal<int> signal;
    std::vector<int> seen;
    const ScopedConnection first = signal.connect([&](int value) { seen.push_back(value); });
    const ScopedConnection second = signal.connect([&](int value) { seen.push_back(value + 1); });
    signal(5);
    EXPECT_THAT(seen, ::testing::ElementsAre(5, 6));
}

TEST(Signal, AScopedConnectionEndsWithItsScope)
{
    Signal<> signal;
    int count = 0;
    {
        const ScopedConnection connection = signal.connect([&] { ++count; });
        signal();
    }
    signal();
    EXPECT_EQ(count, 1);
    EXPECT_TRUE(signal.empty());
}

} // namespace
} // namespace zetcore::signals
