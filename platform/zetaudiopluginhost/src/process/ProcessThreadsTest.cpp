#include "process/ProcessThreads.h"

#include <algorithm>
#include <future>
#include <iterator>
#include <thread>

#include <gmock/gmock.h>
#include <zetcore/utility/Backoff.h>

namespace zetaudiopluginhost {
namespace {

using testing::Contains;
using testing::Not;
using testing::SizeIs;
using Threads = std::vector<std::uint64_t>;

/// A thread that runs until it is told to end.
class RunningThread
{
  public:
    RunningThread() : thread([this] { mayEnd.get_future().wait(); }) {}
    ~RunningThread() { End(); }
    RunningThread(const RunningThread&) = delete;
    RunningThread& operator=(const RunningThread&) = delete;

    void End()
    {
        if (!thread.joinable())
            return;
        mayEnd.set_value();
        thread.join();
    }

  private:
    std::promise<void> mayEnd;
    std::thread thread;
};

/// The system may list a thread for a moment after it has been joined.
void WaitUntilGone(std::uint64_t thread)
{
    zetcore::utility::Backoff pause;
    for (Threads threads = ProcessThreads(); std::ranges::count(threads, thread) > 0;
         threads = ProcessThreads())
        pause();
}

std::uint64_t OnlyNewOne(const Threads& before)
{
    Threads added;
    std::ranges::set_difference(ProcessThreads(), before, std::back_inserter(added));
    EXPECT_THAT(added, SizeIs(1));
    return added.at(0);
}

TEST(ProcessThreadsTest, OneThatRunsOnIsNew)
{
    const Threads before = ProcessThreads();
    EXPECT_FALSE(HasNewThreads(before));
    const RunningThread running;
    EXPECT_TRUE(HasNewThreads(before));
    EXPECT_FALSE(HasNewThreads(ProcessThreads()));
}

TEST(ProcessThreadsTest, OneThatEndsAfterTheFirstLookIsNotLeft)
{
    // A sanitizer starts a thread of its own with the program's first one.
    RunningThread().End();
    const Threads before = ProcessThreads();
    RunningThread running;
    const std::uint64_t ending = OnlyNewOne(before);
    std::vector<Threads> looks;
    EXPECT_FALSE(HasNewThreads(before, [&] {
        looks.push_back(ProcessThreads());
        running.End();
        WaitUntilGone(ending);
        return looks.back();
    })) << "a plug-in that joins its threads late would stay loaded";
    ASSERT_THAT(looks, SizeIs(2));
    EXPECT_THAT(looks[0], Contains(ending));
    EXPECT_THAT(looks[1], Not(Contains(ending)));
}

TEST(ProcessThreadsTest, OneThatWasThereBeforeMayEnd)
{
    RunningThread running;
    const Threads before = ProcessThreads();
    running.End();
    EXPECT_FALSE(HasNewThreads(before));
}

} // namespace
} // namespace zetaudiopluginhost
