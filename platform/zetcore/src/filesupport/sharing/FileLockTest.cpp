#include <zetcore/filesupport/sharing/FileLock.h>

#include <atomic>
#include <optional>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <zettesting/HostFixture.h>

namespace zetcore::filesupport {
namespace {

using namespace std::chrono_literals;

class FileLockTest : public zettesting::HostFixture
{
  protected:
    File InPrefs(const std::string& name) const { return File(zettesting::ToWide(prefs / name)); }
};

TEST_F(FileLockTest, KeepsOthersOutUntilItGoes)
{
    std::optional<FileLock> first(std::in_place, InPrefs("a"));
    EXPECT_TRUE(first->IsHeld());
    EXPECT_FALSE(FileLock(InPrefs("a"), 0ms).IsHeld());
    EXPECT_TRUE(FileLock(InPrefs("b"), 0ms).IsHeld());
    first.reset();
    EXPECT_TRUE(FileLock(InPrefs("a"), 0ms).IsHeld());
}

TEST_F(FileLockTest, NeedsNoFileAndLeavesNothingBesideIt)
{
    const FileLock lock(InPrefs("not there"));
    EXPECT_TRUE(lock.IsHeld());
    EXPECT_TRUE(std::filesystem::is_empty(prefs));
}

TEST_F(FileLockTest, ThoseThatWaitComeOneAfterTheOther)
{
    std::atomic<int> inside = 0, most = 0, rounds = 0;
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number)
        threads.emplace_back([&] {
            for (int round = 0; round < 20; ++round) {
                const FileLock lock(InPrefs("a"), 60s);
                EXPECT_TRUE(lock.IsHeld());
                const int now = ++inside;
                most = std::max(most.load(), now);
                ++rounds;
                --inside;
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(most, 1);
    EXPECT_EQ(rounds, 80);
}

} // namespace
} // namespace zetcore::filesupport
