#include <thread>

#include <zetcore/threads/MainThread.h>
#include <zetcore/threads/PlainEventLoop.h>
#include <zettesting/HostFixture.h>

namespace zetcore::threads {
namespace {

class AssertMainThreadTest : public zettesting::HostFixture
{
  protected:
    AssertMainThreadTest() { ::testing::FLAGS_gtest_death_test_style = "threadsafe"; }

    template<typename Call>
    static void OnAnotherThread(Call call)
    {
        std::thread(call).join();
    }
};

using AssertMainThreadDeathTest = AssertMainThreadTest;

void OperationOfTheMainThread()
{
    AssertMainThread();
}

TEST_F(AssertMainThreadTest, EveryThreadMayCallWhileNoMainThreadIsRegistered)
{
    RequireMainThread("Operation");
    OnAnotherThread([] { RequireMainThread("Operation"); });
    OnAnotherThread(OperationOfTheMainThread);
}

TEST_F(AssertMainThreadTest, TheMainThreadMayCall)
{
    RegisterMainThread(std::make_shared<PlainEventLoop>());
    RequireMainThread("Operation");
    OperationOfTheMainThread();
}

TEST_F(AssertMainThreadTest, EveryThreadMayCallOnceTheMainThreadIsUnregistered)
{
    RegisterMainThread(std::make_shared<PlainEventLoop>());
    RegisterMainThread(nullptr);
    OnAnotherThread([] { RequireMainThread("Operation"); });
}

TEST_F(AssertMainThreadDeathTest, AnotherThreadEndsTheProgramWithTheOperationsName)
{
    RegisterMainThread(std::make_shared<PlainEventLoop>());
    EXPECT_DEATH(OnAnotherThread([] { RequireMainThread("Operation"); }),
                 "Operation was called on another thread than the main thread");
}

#ifdef NDEBUG
TEST_F(AssertMainThreadTest, WithoutAssertionsNothingIsRequired)
{
    RegisterMainThread(std::make_shared<PlainEventLoop>());
    OnAnotherThread(OperationOfTheMainThread);
}
#else
TEST_F(AssertMainThreadDeathTest, WithAssertionsTheFunctionThatAssertsIsNamed)
{
    RegisterMainThread(std::make_shared<PlainEventLoop>());
    EXPECT_DEATH(OnAnotherThread(OperationOfTheMainThread), "OperationOfTheMainThread was called on another");
}
#endif

} // namespace
} // namespace zetcore::threads
