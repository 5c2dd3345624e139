#include <zetcore/string/LineCounter.h>

#include <string>

#include <gtest/gtest.h>

namespace zetcore::string {
namespace {

TEST(LineCounter, CountsFromOneAndALineEndBelongsToItsLine)
{
    LineCounter lines("a\nbc\n\nd");
    EXPECT_EQ(lines.LineOf(0), 1u);
    EXPECT_EQ(lines.LineOf(1), 1u);
    EXPECT_EQ(lines.LineOf(2), 2u);
    EXPECT_EQ(lines.LineOf(4), 2u);
    EXPECT_EQ(lines.LineOf(5), 3u);
    EXPECT_EQ(lines.LineOf(6), 4u);
}

TEST(LineCounter, MayBeAskedInAnyOrderAndBehindTheEnd)
{
    LineCounter lines("a\nb\nc");
    EXPECT_EQ(lines.LineOf(1000), 3u);
    EXPECT_EQ(lines.LineOf(0), 1u);
    EXPECT_EQ(lines.LineOf(2), 2u);
    EXPECT_EQ(lines.LineOf(2), 2u);
    EXPECT_EQ(LineCounter("").LineOf(5), 1u);
}

} // namespace
} // namespace zetcore::string
