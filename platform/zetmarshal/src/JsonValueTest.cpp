#include <zetmarshal/JsonValue.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>

namespace zetmarshal {

namespace {

using namespace zetcore::serialization;
using ::testing::HasSubstr;

template<typename T>
T ValueOf(std::string_view json)
{
    return std::any_cast<T>(*FromJson(json));
}

std::string ReadError(std::string_view json)
{
    try {
        FromJson(json);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "none";
}

std::string Nested(std::size_t depth)
{
    return std::string(depth, '[') + std::string(depth, ']');
}

TEST(JsonValue, WritesEachTypeOfTheValueModel)
{
    const std::vector<std::pair<ValuePtr, std::string>> cases = {
        {MakeValue(true), "true"},
        {MakeValue(false), "false"},
        {MakeValue(-5LL), "-5"},
        {MakeValue(5ULL), "5"},
        {MakeValue(1.5), "1.5"},
        {MakeValue(2.0), "2.0"},
        {MakeValue(1e300), "1e+300"},
        {MakeString("a"), "\"a\""},
        {MakeString(L"\u00e4"), "\"\xC3\xA4\""},
        {std::make_shared<Value>(), "null"},
        {nullptr, "null"},
        {MakeValue(Array()), "[]"},
        {MakeValue(Object()), "{}"},
        {MakeValue(Array{MakeValue(1LL), MakeValue(Array{nullptr}), MakeString("")}), "[1,[null],\"\"]"},
        {MakeValue(Object{{ToUtf8String("b"), MakeValue(true)}, {ToUtf8String("a\""), MakeValue(0LL)}}),
         "{\"a\\\"\":0,\"b\":true}"},
    };
    for (const auto& [value, json] : cases)
        EXPECT_EQ(ToJson(value), json);
}

TEST(JsonValue, WritesOtherNumbersAndStringsAsWhatTheyStandFor)
{
    EXPECT_EQ(ToJson(MakeValue(-7)), "-7");
    EXPECT_EQ(ToJson(MakeValue(7u)), "7");
    EXPECT_EQ(ToJson(MakeValue(7L)), "7");
    EXPECT_EQ(ToJson(MakeValue(7UL)), "7");
    EXPECT_EQ(ToJson(MakeValue(0.5f)), "0.5");
    EXPECT_EQ(ToJson(MakeValue(std::string("a\\"))), "\"a\\\\\"");
}

TEST(JsonValue, RefusesToWriteWhatIsNoSerialisedValue)
{
    EXPECT_THROW(ToJson(MakeValue("a literal")), std::bad_any_cast);
    EXPECT_THROW(ToJson(MakeValue(Array{MakeValue(std::wstring(L"wide"))})), std::bad_any_cast);
    EXPECT_THROW(ToJson(MakeValue(std::nan(""))), std::range_error);
    EXPECT_THROW(ToJson(MakeValue(std::numeric_limits<double>::infinity())), std::range_error);
}

TEST(JsonValue, CarriesIntegersOfTheWholeRangeExactly)
{
    for (const long long number :
         {0LL, 1LL, -1LL, 1LL << 31, -(1LL << 31), (1LL << 53) + 1, std::numeric_limits<long long>::max(),
          std::numeric_limits<long long>::min()})
        EXPECT_EQ(ValueOf<long long>(ToJson(MakeValue(number))), number);
    for (const unsigned long long number :
         {1ULL << 63, (1ULL << 63) + 1, std::numeric_limits<unsigned long long>::max()})
        EXPECT_EQ(ValueOf<unsigned long long>(ToJson(MakeValue(number))), number);
    EXPECT_EQ(ValueOf<long long>(ToJson(MakeValue(5ULL))), 5);
}

TEST(JsonValue, CarriesRealNumbersExactly)
{
    for (const double number : {0.1, -2.0, 1.0 / 3, 1e-300, 123456789.123456789, 5e-324,
                                std::numeric_limits<double>::max(), 9007199254740993e10})
        EXPECT_EQ(ValueOf<double>(ToJson(MakeValue(number))), number);
    EXPECT_EQ(ValueOf<double>("18446744073709551616"), 18446744073709551616.0);
    EXPECT_EQ(ValueOf<double>("1E2"), 100.0);
    EXPECT_EQ(ValueOf<double>("0.1"), 0.1);
}

TEST(JsonValue, CarriesEveryByteOfAString)
{
    Utf8String all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<unsigned char>(byte);
    const std::string json = ToJson(MakeValue(Object{{all, MakeValue(all)}}));
    EXPECT_EQ(json.find('\n'), std::string::npos);
    const auto read = ValueOf<Object>(json);
    ASSERT_EQ(read.count(all), 1u);
    EXPECT_EQ(std::any_cast<Utf8String>(*read.at(all)), all);
}

TEST(JsonValue, CarriesNamesThatAreNotValidUnicode)
{
    for (const char* name :
         {"/vst/caf\xE9.so", "\xC3", "\xFF\xFE", "\xED\xA0\x80", "\xF0\x9F\x8E", "\x80\"\xFF"})
        EXPECT_EQ(ToStdString(ValueOf<Utf8String>(ToJson(MakeString(std::string_view(name))))), name);
}

TEST(JsonValue, ReadsEscapes)
{
    EXPECT_EQ(ToStdString(ValueOf<Utf8String>("\"\\u00e4\\n\\/\\\"\\ud83c\\udfb5\"")),
              "\xC3\xA4\n/\"\xF0\x9F\x8E\xB5");
}

TEST(JsonValue, ReadsEmptyContainersAndNull)
{
    EXPECT_TRUE(ValueOf<Object>("{}").empty());
    EXPECT_TRUE(ValueOf<Array>(" [ ] ").empty());
    EXPECT_FALSE(FromJson("null")->has_value());
    EXPECT_EQ(ValueOf<bool>("true"), true);
}

TEST(JsonValue, LetsTheLastOfTwoEqualKeysCount)
{
    const auto object = ValueOf<Object>("{\"a\":1,\"a\":{\"b\":2}}");
    EXPECT_EQ(object.size(), 1u);
    EXPECT_EQ(ToJson(object.at(ToUtf8String("a"))), "{\"b\":2}");
}

TEST(JsonValue, RefusesDeepNesting)
{
    EXPECT_EQ(ToJson(FromJson(Nested(maxJsonDepth))), Nested(maxJsonDepth));
    EXPECT_THAT(ReadError(Nested(maxJsonDepth + 1)), HasSubstr("at byte 64: it is nested deeper than 64"));
    EXPECT_THAT(ReadError(std::string(1000000, '[')), HasSubstr("nested deeper"));
    ValuePtr deep = FromJson(Nested(maxJsonDepth));
    EXPECT_THROW(ToJson(MakeValue(Array{deep})), std::length_error);
    const ValuePtr ring = MakeValue(Array());
    AppendToArray(ring, ring);
    EXPECT_THROW(ToJson(ring), std::length_error);
    std::any_cast<Array>(ring.get())->clear();
}

TEST(JsonValue, RefusesMoreValuesThanTheLimit)
{
    std::string text = "[";
    for (std::size_t i = 2; i < maxJsonValues; ++i)
        text += "0,";
    EXPECT_NO_THROW(FromJson(text + "0]"));
    for (const char* one : {"[]", "\"\""}) {
        try {
            FromJson(text + "0," + one + "]");
            ADD_FAILURE() << one;
        } catch (const std::runtime_error& error) {
            EXPECT_THAT(error.what(), HasSubstr("more than 1000000 values")) << one;
        }
    }
}

TEST(JsonValue, SaysWhatIsWrongAndWhere)
{
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", "ends too early"},
        {"   ", "ends too early"},
        {"{\"a\":", "at byte 5: it ends too early"},
        {"[1,]", "at byte 3"},
        {"[1 2]", "at byte 3"},
        {"{a:1}", "at byte 1"},
        {"{\"a\" 1}", "at byte 5"},
        {"[1] x", "at byte 4: something follows its end"},
        {"01", "at byte 1"},
        {"nul", "ends too early"},
        {"'a'", "at byte 0"},
        {"\"a\nb\"", "at byte 2"},
        {"\"\\ud800\"", "at byte"},
        {"\"\\x\"", "at byte"},
        {"1e999", "a number is out of range"},
        {"NaN", "at byte 0"},
        {"// comment\n1", "at byte 0"},
    };
    for (const auto& [json, message] : cases) {
        EXPECT_THAT(ReadError(json), HasSubstr("this is no good JSON")) << json;
        EXPECT_THAT(ReadError(json), HasSubstr(message)) << json;
    }
}

TEST(JsonValue, ReadsNothingButWholeValuesFromATruncatedText)
{
    const std::string whole = "{\"a\":[1,-2.5e3,\"x\\u00e4\",true,null,{}]}";
    EXPECT_EQ(ReadError(whole), "none");
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_THAT(ReadError(whole.substr(0, length)), HasSubstr("no good JSON")) << length;
}

} // namespace

} // namespace zetmarshal
