#include <zetcore/threads/ClearQueuedCalls.h>
#include <zetcore/threads/PlainEventLoop.h>

#include <future>
#include <stdexcept>

#include <zettesting/HostFixture.h>

namespace zetcore::threads {
namespace {

using Clock = std::chrono::steady_clock;

class PlainEventLoopTest : public zettesting::HostFixture
{
  protected:
    PlainEventLoopTest() { RegisterMainThread(loop); }

    const std::shared_ptr<PlainEventLoop> loop = std::make_shared<PlainEventLoop>();
};

TEST_F(PlainEventLoopTest, RunReturnsWhenNothingIsLeftLongBeforeTheDeadline)
{
    int ran = 0;
    AsyncCallFromMainThread([&] { ++ran; }, 0);
    const auto start = Clock::now();
    loop->Run(start + std::chrono::hours(24));
    loop->Run(start + std::chrono::hours(24));
    EXPECT_EQ(ran, 1);
    EXPECT_LT(Clock::now() - start, std::chrono::minutes(1));
}

TEST_F(PlainEventLoopTest, OnlyItsOwnThreadMayRunIt)
{
    EXPECT_TRUE(loop->CanRun());
    std::async(std::launch::async, [this] {
        EXPECT_FALSE(loop->CanRun());
        EXPECT_THROW(loop->Run(Clock::now()), std::logic_error);
        EXPECT_THROW(loop->WaitAndRun(Clock::now()), std::logic_error);
    }).get();
}

TEST_F(PlainEventLoopTest, ACallFromAnotherThreadEndsTheSleep)
{
    bool ran = false;
    const auto poster =
        std::async(std::launch::async, [&] { AsyncCallFromMainThread([&] { ran = true; }, 0); });
    loop->WaitAndRun(Clock::time_point::max());
    EXPECT_TRUE(ran);
}

TEST_F(PlainEventLoopTest, WaitingEndsWhenTheTimeIsUp)
{
    const auto until = Clock::now() + std::chrono::milliseconds(20);
    loop->WaitAndRun(until);
    EXPECT_GE(Clock::now(), until);
}

TEST_F(PlainEventLoopTest, WhatIsQueuedRunsEvenWhenTheTimeIsUp)
{
    int ran = 0;
    AsyncCallFromMainThread([&] { ++ran; }, 0);
    loop->WaitAndRun(Clock::now());
    EXPECT_EQ(ran, 1);
}

TEST_F(PlainEventLoopTest, AWakeWithoutACallDoesNotEndTheWait)
{
    loop->Wake();
    const auto until = Clock::now() + std::chrono::milliseconds(20);
    loop->WaitAndRun(until);
    EXPECT_GE(Clock::now(), until);
}

TEST_F(PlainEventLoopTest, ACallThatPostsItselfForEverDoesNotHoldTheWait)
{
    int ran = 0;
    std::function<void()> again = [&] {
        ++ran;
        AsyncCallFromMainThread(again, 0);
    };
    AsyncCallFromMainThread(again, 0);
    loop->WaitAndRun(Clock::time_point::max());
    EXPECT_EQ(ran, 1);
    ClearQueuedCalls();
}

TEST_F(PlainEventLoopTest, CallsThatWerePostedBeforeItWasRegisteredWakeIt)
{
    RegisterMainThread(nullptr);
    bool ran = false;
    AsyncCallFromMainThread([&] { ran = true; }, 0);
    RegisterMainThread(loop);
    loop->WaitAndRun(Clock::now() + std::chrono::minutes(2));
    EXPECT_TRUE(ran);
}

} // namespace
} // namespace zetcore::threads
