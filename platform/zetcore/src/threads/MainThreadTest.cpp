#include <zetcore/threads/MainThread.h>

#include <algorithm>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/threads/ClearQueuedCalls.h>
#include <zetcore/threads/PlainEventLoop.h>
#include <zettesting/HostFixture.h>

namespace zetcore::threads {
namespace {

using ::testing::ElementsAre;
using Clock = std::chrono::steady_clock;

Clock::time_point Later()
{
    return Clock::now() + std::chrono::minutes(2);
}

class MainThreadTest : public zettesting::HostFixture
{
  protected:
    std::vector<int> ran;

    std::function<void()> Note(int number)
    {
        return [this, number] { ran.push_back(number); };
    }
};

TEST_F(MainThreadTest, CallsRunInTheOrderOfPosting)
{
    for (int number = 0; number < 5; ++number)
        AsyncCallFromMainThread(Note(number), 0);
    EXPECT_TRUE(HasQueuedCalls());
    EXPECT_TRUE(ran.empty());
    EXPECT_TRUE(RunQueuedCalls(Later()));
    EXPECT_THAT(ran, ElementsAre(0, 1, 2, 3, 4));
    EXPECT_FALSE(HasQueuedCalls());
    EXPECT_FALSE(RunQueuedCalls(Later()));
}

TEST_F(MainThreadTest, CallsThatCallsPostRunToo)
{
    AsyncCallFromMainThread(
        [this] {
            ran.push_back(1);
            AsyncCallFromMainThread(Note(3), 0);
        },
        0);
    AsyncCallFromMainThread(Note(2), 0);
    RunQueuedCalls(Later());
    EXPECT_THAT(ran, ElementsAre(1, 2, 3));
}

TEST_F(MainThreadTest, ACallThatRunsTheQueueItselfFindsTheLaterOnesInIt)
{
    AsyncCallFromMainThread(
        [this] {
            ran.push_back(1);
            RunQueuedCalls(Later());
            ran.push_back(4);
        },
        0);
    AsyncCallFromMainThread(Note(2), 0);
    AsyncCallFromMainThread(Note(3), 0);
    RunQueuedCalls(Later());
    EXPECT_THAT(ran, ElementsAre(1, 2, 3, 4));
}

TEST_F(MainThreadTest, NoCallBeginsAfterTheDeadline)
{
    AsyncCallFromMainThread(Note(1), 0);
    EXPECT_FALSE(RunQueuedCalls(Clock::now()));
    EXPECT_TRUE(ran.empty());
    EXPECT_TRUE(HasQueuedCalls());
}

TEST_F(MainThreadTest, ACallThatPostsItselfForEverEndsAtTheDeadline)
{
    std::function<void()> again = [&] { AsyncCallFromMainThread(again, 0); };
    AsyncCallFromMainThread(again, 0);
    const auto deadline = Clock::now() + std::chrono::milliseconds(10);
    EXPECT_TRUE(RunQueuedCalls(deadline));
    EXPECT_GE(Clock::now(), deadline);
    ClearQueuedCalls();
}

TEST_F(MainThreadTest, ACallThatThrowsIsTracedAndTheQueueGoesOn)
{
    debug::SetMasterTraceVolume(1);
    AsyncCallFromMainThread([] { throw std::runtime_error("row is gone"); }, 0);
    AsyncCallFromMainThread([] { throw 5; }, 0);
    AsyncCallFromMainThread(Note(1), 0);
    EXPECT_NO_THROW(RunQueuedCalls(Later()));
    EXPECT_THAT(ran, ElementsAre(1));
    EXPECT_THAT(*traceLines,
                ElementsAre(::testing::HasSubstr("row is gone"), ::testing::HasSubstr("unknown exception")));
}

TEST_F(MainThreadTest, NothingToCallAndDelaysAreRefused)
{
    EXPECT_THROW(AsyncCallFromMainThread({}, 0), std::invalid_argument);
    EXPECT_THROW(AsyncCallFromMainThread([] {}, 10), std::invalid_argument);
    EXPECT_THROW(AsyncCallFromMainThread([] {}, -1), std::invalid_argument);
    EXPECT_FALSE(HasQueuedCalls());
}

TEST_F(MainThreadTest, ClearedCallsAreDroppedAndMayPostWhenTheyGo)
{
    struct PostsAtItsEnd
    {
        ~PostsAtItsEnd()
        {
            AsyncCallFromMainThread([] {}, 0);
        }
    };
    AsyncCallFromMainThread([guard = std::make_shared<PostsAtItsEnd>(), this] { ran.push_back(1); }, 0);
    ClearQueuedCalls();
    EXPECT_TRUE(HasQueuedCalls());
    RunQueuedCalls(Later());
    EXPECT_TRUE(ran.empty());
}

TEST_F(MainThreadTest, RegisteringMakesTheCallingThreadTheMainThread)
{
    EXPECT_EQ(GetRegisteredMainThread(), nullptr);
    EXPECT_FALSE(IsMainThread());
    const auto loop = std::make_shared<PlainEventLoop>();
    RegisterMainThread(loop);
    EXPECT_EQ(GetRegisteredMainThread(), loop);
    EXPECT_TRUE(IsMainThread());
    std::thread([] { EXPECT_FALSE(IsMainThread()); }).join();
    RegisterMainThread(nullptr);
    EXPECT_EQ(GetRegisteredMainThread(), nullptr);
    EXPECT_FALSE(IsMainThread());
}

TEST_F(MainThreadTest, EachThreadsCallsKeepTheirOrder)
{
    constexpr int threadCount = 4;
    constexpr int callCount = 500;
    const auto loop = std::make_shared<PlainEventLoop>();
    RegisterMainThread(loop);
    std::vector<std::vector<int>> seen(threadCount);
    int finished = 0;
    std::vector<std::thread> posters;
    for (int poster = 0; poster < threadCount; ++poster)
        posters.emplace_back([&, poster] {
            for (int call = 0; call < callCount; ++call)
                AsyncCallFromMainThread([&, poster, call] { seen[poster].push_back(call); }, 0);
            AsyncCallFromMainThread([&] { ++finished; }, 0);
        });
    const auto limit = Later();
    while (finished < threadCount && Clock::now() < limit)
        loop->WaitAndRun(limit);
    for (std::thread& poster : posters)
        poster.join();
    EXPECT_EQ(finished, threadCount);
    for (const std::vector<int>& numbers : seen) {
        EXPECT_EQ(numbers.size(), static_cast<std::size_t>(callCount));
        EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
    }
}

} // namespace
} // namespace zetcore::threads
