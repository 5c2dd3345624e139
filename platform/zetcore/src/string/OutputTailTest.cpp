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
}

std::string Times(int count, const std::string& character)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += character;
    return text;
}

TEST(OutputTail, ALineIsCutBetweenWholeCharacters)
{
    for (const std::string character : {"x", "\xC3\xBC", "\xE2\x82\xAC", "\xF0\x9F\x8E\x9B"}) {
        const std::string ten = Times(10, character);
        EXPECT_EQ(TidyLine(ten, 10), ten);
        EXPECT_EQ(TidyLine("  " + ten + "  ", 10), ten);
        for (const int count : {11, 12, 5000}) {
            EXPECT_EQ(TidyLine(Times(count, character), 10), ten + "...") << count;
            for (const char* blanks : {" ", "  ", "   "})
                EXPECT_EQ(TidyLine(blanks + Times(count, character), 10), ten + "...") << count;
        }
    }
}

TEST(OutputTail, TheTailBeginsWithAWholeCharacter)
{
    const std::string character = "\xF0\x9F\x8E\x9B";
    for (const char* end : {"", "x", "xx", "xxx"}) {
        OutputTail atOnce, inTurn;
        atOnce.Append(Times(2000, character) + end);
        for (int i = 0; i < 2000; ++i)
            inTurn.Append(character);
        inTurn.Append(end);
        const std::string expected = Times(*end ? 1023 : 1024, character) + end;
        EXPECT_EQ(atOnce.LastLine(), expected);
        EXPECT_EQ(inTurn.LastLine(), expected);
    }
}

} // namespace
} // namespace zetcore::string
