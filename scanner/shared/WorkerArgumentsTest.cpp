#include "WorkerArguments.h"

#include <gtest/gtest.h>

namespace zetaudiofilterscan {
namespace {

std::optional<WorkerArguments> Read(const std::vector<std::string>& texts)
{
    return WorkerArguments::Read({texts.begin(), texts.end()});
}

TEST(WorkerArguments, ComeBackFromTheCommandLine)
{
    const WorkerArguments arguments{3, 18446744073709551615U, 4711};
    const auto read = Read(arguments.ToArguments());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->channel, 3U);
    EXPECT_EQ(read->page, 18446744073709551615U);
    EXPECT_EQ(read->parentProcess, 4711U);
    EXPECT_FALSE(read->makesCopies);
}

TEST(WorkerArguments, SayThatTheProcessMakesCopies)
{
    const auto read = Read(WorkerArguments{3, 4, 4711, true}.ToArguments());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->channel, 3U);
    EXPECT_EQ(read->page, 4U);
    EXPECT_EQ(read->parentProcess, 4711U);
    EXPECT_TRUE(read->makesCopies);
}

TEST(WorkerArguments, AnythingElseIsNoWorker)
{
    const std::vector<std::vector<std::string>> others{{},
                                                       {"--help"},
                                                       {"--worker"},
                                                       {"--worker", "3", "4"},
                                                       {"--worker", "3", "4", "5", "6"},
                                                       {"--worker", "3", "4", "--copies"},
                                                       {"--worker", "3", "4", "5", "--copies", "6"},
                                                       {"--worker", "3", "4", "-1"},
                                                       {"--worker", "3", "", "5"},
                                                       {"--worker", "3x", "4", "5"},
                                                       {"worker", "3", "4", "5"}};
    for (const auto& other : others)
        EXPECT_FALSE(Read(other)) << testing::PrintToString(other);
}

} // namespace
} // namespace zetaudiofilterscan
