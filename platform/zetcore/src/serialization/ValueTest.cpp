#include <zetcore/serialization/Value.h>

#include <gtest/gtest.h>

namespace zetcore::serialization {
namespace {

TEST(Value, TextsAreHeldAsUTF8Bytes)
{
    const ValuePtr value = MakeString(L"é");
    EXPECT_EQ(ToStdString(std::any_cast<Utf8String>(*value)), "\xC3\xA9");
    EXPECT_EQ(*std::any_cast<Utf8String>(MakeString("a").get()), ToUtf8String("a"));
    EXPECT_EQ(ToStdString(ToUtf8String(std::string("a\0\xFF", 3))), std::string("a\0\xFF", 3));
}

TEST(Value, EveryKindIsHeldAsItsOwnType)
{
    EXPECT_NO_THROW(AssertExpectedType(MakeValue(true), typeid(bool)));
    EXPECT_NO_THROW(AssertExpectedType(MakeValue(-1LL), typeid(long long)));
    EXPECT_NO_THROW(AssertExpectedType(MakeValue(1ULL), typeid(unsigned long long)));
    EXPECT_NO_THROW(AssertExpectedType(MakeValue(0.5), typeid(double)));
    EXPECT_NO_THROW(AssertExpectedType(MakeValue(Array{}), typeid(Array)));
    EXPECT_NO_THROW(AssertExpectedType(MakeValue(Object{}), typeid(Object)));
    EXPECT_NO_THROW(AssertExpectedType(MakeString("a"), typeid(Utf8String)));
    EXPECT_NO_THROW(AssertExpectedType(std::make_shared<Value>(), typeid(void)));
}

TEST(Value, AnotherTypeOrNullIsABadCast)
{
    EXPECT_THROW(AssertExpectedType(MakeValue(1LL), typeid(unsigned long long)), std::bad_any_cast);
    EXPECT_THROW(AssertExpectedType(std::make_shared<Value>(), typeid(bool)), std::bad_any_cast);
    EXPECT_THROW(AssertExpectedType(nullptr, typeid(bool)), std::bad_any_cast);
    try {
        AssertExpectedType(nullptr, typeid(Object));
        FAIL() << "null was accepted";
    } catch (const std::bad_any_cast& error) {
        EXPECT_STREQ(error.what(), "bad any_cast");
    }
}

TEST(Value, ArraysGrowAtTheEnd)
{
    const ValuePtr array = MakeValue(Array{});
    AppendToArray(array, MakeValue(1LL));
    AppendToArray(array, MakeString("two"));
    const auto& elements = std::any_cast<const Array&>(*array);
    ASSERT_EQ(elements.size(), 2u);
    EXPECT_EQ(std::any_cast<long long>(*elements[0]), 1);
    EXPECT_THROW(AppendToArray(MakeString("no array"), array), std::bad_any_cast);
    EXPECT_THROW(AppendToArray(nullptr, array), std::bad_any_cast);
}

TEST(Value, AnObjectsElementIsFoundByItsKey)
{
    const ValuePtr object = MakeValue(Object{{ToUtf8String("total"), MakeValue(7LL)}});
    EXPECT_EQ(std::any_cast<long long>(*GetVariantInObject(object, "total")), 7);
}

TEST(Value, AMissingKeyIsNamed)
{
    const ValuePtr object = MakeValue(Object{});
    try {
        GetVariantInObject(object, "progress");
        FAIL() << "the key was found";
    } catch (const missing_key_exception& error) {
        EXPECT_EQ(error.Key(), "progress");
        EXPECT_NE(std::string(error.what()).find("progress"), std::string::npos);
    }
    EXPECT_THROW(GetVariantInObject(MakeValue(Array{}), "a"), std::bad_any_cast);
    EXPECT_THROW(GetVariantInObject(nullptr, "a"), std::bad_any_cast);
}

TEST(Value, ACallIsAMethodAndAnArray)
{
    const ValuePtr arguments = MakeValue(Array{});
    const Call call = BuildCall("com.example.Method", arguments);
    EXPECT_EQ(call.method, "com.example.Method");
    EXPECT_EQ(call.arguments, arguments);
    EXPECT_THROW(BuildCall("m", nullptr), std::bad_any_cast);
    EXPECT_THROW(BuildCall("m", MakeValue(Object{})), std::bad_any_cast);
}

} // namespace
} // namespace zetcore::serialization
