#include <zetcore/string/ParseNumber.h>

#include <cstdint>

#include <gtest/gtest.h>

namespace zetcore::string {
namespace {

TEST(ParseNumber, TakesTheWholeTextOnly)
{
    EXPECT_EQ(ParseNumber<int>("0"), 0);
    EXPECT_EQ(ParseNumber<int>("-12"), -12);
    for (const char* text : {"", " ", "-", "+1", " 1", "1 ", "1x", "0x1", "1.0"})
        EXPECT_FALSE(ParseNumber<int>(text)) << text;
}

TEST(ParseNumber, TakesWhatFitsTheTypeOnly)
{
    EXPECT_EQ(ParseNumber<std::uint8_t>("255"), 255);
    EXPECT_FALSE(ParseNumber<std::uint8_t>("256"));
    EXPECT_FALSE(ParseNumber<std::uint32_t>("-1"));
    EXPECT_EQ(ParseNumber<std::int64_t>("-9223372036854775808"), INT64_MIN);
    EXPECT_FALSE(ParseNumber<std::int64_t>("9223372036854775808"));
}

TEST(ParseNumber, ReadsDigitsOfTheBase)
{
    EXPECT_EQ(ParseNumber<unsigned>("fF", 16), 255);
    EXPECT_FALSE(ParseNumber<unsigned>("fg", 16));
    EXPECT_FALSE(ParseNumber<unsigned>("ff"));
}

TEST(ParseNumber, ReadsFractions)
{
    EXPECT_EQ(ParseNumber<double>("-1.5"), -1.5);
    EXPECT_EQ(ParseNumber<double>("15e-1"), 1.5);
    EXPECT_FALSE(ParseNumber<double>("15e-1", std::chars_format::fixed));
    EXPECT_FALSE(ParseNumber<double>("1.5s"));
    EXPECT_FALSE(ParseNumber<double>("1e999"));
}

} // namespace
} // namespace zetcore::string
