#include "supervisor/conversation/WorkerCount.h"

#include <gtest/gtest.h>

namespace zetaudiofilterscan {
namespace {

constexpr std::uint64_t megabyte = 1 << 20;
constexpr std::uint64_t plenty = 65536 * megabyte;

TEST(WorkerCount, IsTwiceTheProcessorsWithinBounds)
{
    EXPECT_EQ(WorkerCount("", 4, plenty), 8U);
    EXPECT_EQ(WorkerCount("", 0, plenty), 4U) << "the system does not tell";
    EXPECT_EQ(WorkerCount("", 1, plenty), 4U);
    EXPECT_EQ(WorkerCount("", 64, plenty), 16U);
}

TEST(WorkerCount, IsBoundedByTheMemoryThatIsFree)
{
    EXPECT_EQ(WorkerCount("", 8, 600 * megabyte), 4U);
    EXPECT_EQ(WorkerCount("", 8, 1 * megabyte), 1U);
    EXPECT_EQ(WorkerCount("", 8, 0), 16U) << "the system does not tell";
}

TEST(WorkerCount, IsTheUsersNumberWhateverTheMachine)
{
    EXPECT_EQ(WorkerCount("1", 8, plenty), 1U);
    EXPECT_EQ(WorkerCount("12", 1, 1 * megabyte), 12U);
    EXPECT_EQ(WorkerCount("1000", 8, plenty), 16U);
    for (const char* wrong : {"0", "-1", "many", "2 ", "99999999999999999999"})
        EXPECT_EQ(WorkerCount(wrong, 3, plenty), 6U) << wrong;
}

TEST(MemoryLimit, IsAQuarterOfTheMachineOrTheUsersNumber)
{
    EXPECT_EQ(MemoryLimit("", 8000 * megabyte), 2000 * megabyte);
    EXPECT_EQ(MemoryLimit("300", 8000 * megabyte), 300 * megabyte);
    EXPECT_EQ(MemoryLimit("0", 8000 * megabyte), 0U);
    EXPECT_EQ(MemoryLimit("lots", 8000 * megabyte), 2000 * megabyte);
    EXPECT_GT(MemoryLimit("18446744073709551615", 0), plenty) << "no overflow";
}

} // namespace
} // namespace zetaudiofilterscan
