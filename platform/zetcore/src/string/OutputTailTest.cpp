#include <zetcore/string/OutputTail.h>

#include <gtest/gtest.h>

namespace zetcore::string {
namespace {

TEST(OutputTail, KnowsTheLastLineThatIsNotBlank)
{
    OutputTail tail;
    EXPECT_EQ(tail.LastLine(), "");
    tail.Append("first\nsecond\r\n \n");
    EXPECT_EQ(tail.LastLine(), "second");
    tail.Append("thi");
    tail.Append("rd");
    EXPECT_EQ(tail.LastLine(), "third");
    tail.Append(std::string(100000, 'x') + "\nlast");
    EXPECT_EQ(tail.LastLine(), "last");
    tail.Append(std::string(100000, 'y'));
    EXPECT_EQ(tail.LastLine(), std::string(4096, 'y'));
    tail.Clear();
    EXPECT_EQ(tail.LastLine(), "");
}

TEST(OutputTail, AnyOutputMakesOneValidLine)
{
    EXPECT_EQ(TidyLine(" \t plain \r\n", 100), "plain");
    EXPECT_EQ(TidyLine("bell\x07 and \xFF\xFE bytes", 100), "bell  and \xEF\xBF\xBD\xEF\xBF\xBD bytes");
    EXPECT_EQ(TidyLine(std::string("a\0b", 3), 100), "a b");
    EXPECT_EQ(TidyLine(" \x01\x02 ", 100), "");
    EXPECT_EQ(TidyLine(std::string(5000, 'x'), 10), "xxxxxxxxxx...");
    EXPECT_EQ(TidyLine(std::string(10, 'x'), 10), "xxxxxxxxxx");
}

} // namespace
} // namespace zetcore::string
