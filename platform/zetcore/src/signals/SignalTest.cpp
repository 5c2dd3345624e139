#include <zetcore/signals/Signal.h>

#include <atomic>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

namespace zetcore::events {
namespace {

using ::testing::ElementsAre;

/// Connects slots that write their names into one list.
class SignalTest : public ::testing::Test
{
  protected:
    std::function<void()> Named(std::string name)
    {
        return [this, name = std::move(name)] { called.push_back(name); };
    }

    Signal<> signal;
    std::vector<std::string> called;
};

TEST_F(SignalTest, SlotsRunInTheOrderOfConnection)
{
    Signal<int> numbers;
    std::vector<int> seen;
    const ScopedConnection first = numbers.Connect([&](int value) { seen.push_back(value); });
    const ScopedConnection second = numbers.Connect([&](int value) { seen.push_back(value + 1); });
    numbers(5);
    EXPECT_THAT(seen, ElementsAre(5, 6));
}

TEST_F(SignalTest, EverySlotGetsTheSameArguments)
{
    Signal<std::string, const std::string&> texts;
    const std::string shared = "shared";
    std::vector<std::string> copies;
    std::vector<const std::string*> addresses;
    for (int slot = 0; slot < 2; ++slot) {
        texts.Connect([&](std::string copy, const std::string& same) {
            copies.push_back(std::move(copy));
            addresses.push_back(&same);
        });
    }
    texts("copy", shared);
    EXPECT_THAT(copies, ElementsAre("copy", "copy"));
    EXPECT_THAT(addresses, ElementsAre(&shared, &shared));
}

TEST_F(SignalTest, AConnectionLastsUntilItIsEnded)
{
    EXPECT_TRUE(signal.IsEmpty());
    Connection connection = signal.Connect(Named("slot"));
    const Connection copy = connection;
    EXPECT_TRUE(copy.IsConnected());
    EXPECT_FALSE(signal.IsEmpty());
    signal();
    connection.Disconnect();
    connection.Disconnect();
    signal();
    EXPECT_THAT(called, ElementsAre("slot"));
    EXPECT_FALSE(copy.IsConnected());
    EXPECT_TRUE(signal.IsEmpty());
}

TEST_F(SignalTest, AScopedConnectionEndsWithItsScope)
{
    {
        const ScopedConnection connection = signal.Connect(Named("slot"));
        EXPECT_TRUE(connection.IsConnected());
        signal();
    }
    signal();
    EXPECT_THAT(called, ElementsAre("slot"));
    EXPECT_TRUE(signal.IsEmpty());
}

TEST_F(SignalTest, AScopedConnectionMovesItsTie)
{
    ScopedConnection target;
    EXPECT_FALSE(target.IsConnected());
    {
        ScopedConnection first = signal.Connect(Named("first"));
        const ScopedConnection moved = std::move(first);
        signal();
        target = signal.Connect(Named("second"));
    }
    signal();
    target = signal.Connect(Named("third"));
    signal();
    EXPECT_THAT(called, ElementsAre("first", "second", "third"));
}

TEST_F(SignalTest, AScopedConnectionSurvivesAMoveToItself)
{
    ScopedConnection connection = signal.Connect(Named("slot"));
    ScopedConnection& same = connection;
    connection = std::move(same);
    EXPECT_TRUE(connection.IsConnected());
}

TEST_F(SignalTest, AnEmptySlotIsRefused)
{
    EXPECT_THROW(signal.Connect(nullptr), utility::null_ptr_exception);
    EXPECT_TRUE(signal.IsEmpty());
}

TEST_F(SignalTest, ASlotConnectedByASlotIsCalledFromTheNextTimeOn)
{
    Connection connector = signal.Connect([this] {
        called.push_back("connector");
        signal.Connect(Named("new"));
    });
    signal();
    EXPECT_THAT(called, ElementsAre("connector"));
    connector.Disconnect();
    called.clear();
    signal();
    EXPECT_THAT(called, ElementsAre("new"));
}

TEST_F(SignalTest, ASlotDisconnectedBeforeItsTurnIsLeftOut)
{
    Connection second;
    signal.Connect([this, &second] {
        called.push_back("first");
        second.Disconnect();
    });
    second = signal.Connect(Named("second"));
    signal.Connect(Named("third"));
    signal();
    EXPECT_THAT(called, ElementsAre("first", "third"));
}

TEST_F(SignalTest, ASlotThatDisconnectsItselfLivesUntilItReturns)
{
    const auto kept = std::make_shared<std::string>("kept");
    Connection connection;
    connection = signal.Connect([this, &connection, text = kept] {
        connection.Disconnect();
        EXPECT_GT(text.use_count(), 1);
        called.push_back(*text);
    });
    signal();
    signal();
    EXPECT_THAT(called, ElementsAre("kept"));
    EXPECT_EQ(kept.use_count(), 1);
}

TEST_F(SignalTest, ASlotMayRaiseItsSignal)
{
    signal.Connect([this] {
        called.push_back("outer");
        if (called.size() == 1)
            signal();
    });
    signal.Connect(Named("inner"));
    signal();
    EXPECT_THAT(called, ElementsAre("outer", "outer", "inner", "inner"));
}

TEST_F(SignalTest, AnExceptionReachesWhoeverRaisedTheSignal)
{
    Connection thrower = signal.Connect([] { throw std::range_error("of the slot"); });
    signal.Connect(Named("later"));
    EXPECT_THROW(signal(), std::range_error);
    EXPECT_THAT(called, ElementsAre());
    thrower.Disconnect();
    signal();
    EXPECT_THAT(called, ElementsAre("later"));
}

TEST_F(SignalTest, TheSignalEndsItsConnections)
{
    std::optional<Signal<>> ending(std::in_place);
    Connection connection = ending->Connect(Named("slot"));
    ending.reset();
    EXPECT_FALSE(connection.IsConnected());
    connection.Disconnect();
}

TEST_F(SignalTest, ASlotMayEndItsSignal)
{
    std::optional<Signal<>> ending(std::in_place);
    Connection last;
    ending->Connect([this, &ending] {
        called.push_back("ends it");
        ending.reset();
    });
    last = ending->Connect(Named("later"));
    (*ending)();
    EXPECT_THAT(called, ElementsAre("ends it"));
    EXPECT_FALSE(last.IsConnected());
}

TEST_F(SignalTest, OtherThreadsUseItWhileASlotRuns)
{
    signal.Connect([this] {
        std::thread([this] {
            signal.Connect(Named("passing")).Disconnect();
            signal.Connect(Named("staying"));
            EXPECT_FALSE(signal.IsEmpty());
        }).join();
    });
    signal();
    signal();
    EXPECT_THAT(called, ElementsAre("staying"));
}

/// Uses the signal when it is destroyed, on another thread.
struct LateUser
{
    Signal<>& signal;
    explicit LateUser(Signal<>& signalToUse) : signal(signalToUse) {}
    ~LateUser()
    {
        std::thread([this] { EXPECT_TRUE(signal.IsEmpty()); }).join();
    }
};

TEST_F(SignalTest, ASlotMayUseTheSignalWhenItIsDestroyed)
{
    Connection connection = signal.Connect([user = std::make_shared<LateUser>(signal)] {});
    connection.Disconnect();
}

TEST_F(SignalTest, ThreadsRaiseAndConnectAtOnce)
{
    constexpr int rounds = 500;
    std::atomic<int> permanent = 0;
    std::atomic<int> passing = 0;
    signal.Connect([&permanent] { ++permanent; });
    std::vector<std::thread> threads;
    for (int number = 0; number < 2; ++number) {
        threads.emplace_back([this] {
            for (int round = 0; round < rounds; ++round)
                signal();
        });
        threads.emplace_back([&] {
            for (int round = 0; round < rounds; ++round) {
                const ScopedConnection connection = signal.Connect([&passing] { ++passing; });
                signal();
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(permanent, 4 * rounds);
    EXPECT_GE(passing, 2 * rounds);
    Connection last = signal.Connect([] {});
    last.Disconnect();
    permanent = 0;
    passing = 0;
    signal();
    EXPECT_EQ(permanent, 1);
    EXPECT_EQ(passing, 0);
}

} // namespace
} // namespace zetcore::events
