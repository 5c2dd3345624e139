#include <zetscanprotocol/ScanInfo.h>

#include <any>
#include <functional>
#include <limits>

#include <gtest/gtest.h>
#include <zetmarshal/JsonValue.h>

namespace zetscanprotocol {
namespace {

using namespace zetcore::serialization;

const zetaudiofilterhost::PluginLocator greeting(zetaudiofilterhost::TechnologyType::VST,
                                                 L"/vst/gr\u00FC\u00DF.so");

Utf8String Key(const char* key)
{
    return ToUtf8String(key);
}

/// A good record, with what a case changes about it.
ValuePtr Reply(const std::function<void(Object&)>& change = {})
{
    Object record;
    record[Key("locator")] = MakeString(std::string_view("VST|/vst/gr\xc3\xbc\xc3\x9f.so|"));
    record[Key("subcomponent")] = MakeString(std::string_view("sub \xc3\xbc"));
    record[Key("progress")] = MakeValue(3LL);
    record[Key("total")] = MakeValue(7ULL);
    record[Key("continue")] = MakeValue(true);
    if (change)
        change(record);
    return MakeValue(Object{{Key("value"), MakeValue(record)}});
}

ValuePtr ReplyWith(const char* key, ValuePtr value)
{
    return Reply([&](Object& record) { record[Key(key)] = std::move(value); });
}

TEST(ScanInfo, ReadsEveryFieldOfTheRecord)
{
    EXPECT_EQ(ReadScanInfoReply(Reply()), (ScanInfo{greeting, L"sub \u00FC", 3, 7, true}));
}

TEST(ScanInfo, AMissingKeyRaisesMissingKeyExceptionWithItsName)
{
    for (const char* key : {"locator", "subcomponent", "progress", "total", "continue"}) {
        try {
            ReadScanInfoReply(Reply([&](Object& record) { record.erase(Key(key)); }));
            FAIL() << key;
        } catch (const missing_key_exception& error) {
            EXPECT_EQ(error.Key(), key);
        }
    }
}

TEST(ScanInfo, TheFirstMissingKeyInReadingOrderIsTheOneThatIsNamed)
{
    try {
        ReadScanInfoReply(Reply([](Object& record) {
            record.erase(Key("progress"));
            record.erase(Key("continue"));
            record[Key("total")] = MakeValue(true);
        }));
        FAIL();
    } catch (const missing_key_exception& error) {
        EXPECT_EQ(error.Key(), "progress");
    }
}

TEST(ScanInfo, AReplyWithoutValueRaisesMissingKeyExceptionNamingValue)
{
    try {
        ReadScanInfoReply(MakeValue(Object()));
        FAIL();
    } catch (const missing_key_exception& error) {
        EXPECT_EQ(error.Key(), "value");
    }
}

TEST(ScanInfo, AReplyThatIsNoObjectIsABadAnyCast)
{
    for (const ValuePtr& reply :
         {ValuePtr(), MakeValue(Array()), MakeString(std::string_view("{}")), std::make_shared<Value>()})
        EXPECT_THROW(ReadScanInfoReply(reply), std::bad_any_cast);
}

TEST(ScanInfo, AValueThatIsNoObjectIsABadAnyCast)
{
    for (const ValuePtr& value : {ValuePtr(), MakeValue(Array()), MakeValue(1LL)})
        EXPECT_THROW(ReadScanInfoReply(MakeValue(Object{{Key("value"), value}})), std::bad_any_cast);
}

TEST(ScanInfo, TheErrorForAWrongTypeNamesTheField)
{
    const auto messageOf = [](const ValuePtr& reply) -> std::string {
        try {
            ReadScanInfoReply(reply);
        } catch (const std::bad_any_cast& error) {
            return error.what();
        }
        return "accepted";
    };
    for (const char* key : {"locator", "subcomponent", "progress", "total", "continue"})
        for (const ValuePtr& value :
             {std::make_shared<Value>(), MakeValue(0.5), MakeValue(Array()), MakeValue(Object()), ValuePtr()})
            EXPECT_EQ(messageOf(ReplyWith(key, value)),
                      "Bad any_cast: \"" + std::string(key) + "\" of GetScanInfo's reply has a wrong type");
    EXPECT_NE(messageOf(MakeValue(Array())).find("\"result\""), std::string::npos);
    EXPECT_NE(messageOf(MakeValue(Object{{Key("value"), MakeValue(Array())}})).find("\"value\""),
              std::string::npos);
}

TEST(ScanInfo, ProgressAndTotalAbove2To31AreNarrowedToTheirLow32Bits)
{
    struct Case
    {
        ValuePtr given;
        std::int32_t read;
    };
    for (const Case& each : {Case{MakeValue(0x80000000LL), std::numeric_limits<std::int32_t>::min()},
                             {MakeValue(0x1'0000'0005LL), 5},
                             {MakeValue(-1LL), -1},
                             {MakeValue(0xFFFF'FFFF'FFFF'FFFFULL), -1},
                             {MakeValue(0x2'7FFF'FFFFULL), std::numeric_limits<std::int32_t>::max()}}) {
        EXPECT_EQ(ReadScanInfoReply(ReplyWith("progress", each.given)).progress, each.read);
        EXPECT_EQ(ReadScanInfoReply(ReplyWith("total", each.given)).total, each.read);
    }
}

TEST(ScanInfo, AnIntegerIsOnlyASignedOrUnsigned64BitNumber)
{
    for (const ValuePtr& value : {MakeValue(1), MakeValue(1.0), MakeValue(true), MakeValue(1U), ValuePtr(),
                                  MakeString(std::string_view("1"))}) {
        EXPECT_THROW(ReadScanInfoReply(ReplyWith("progress", value)), std::bad_any_cast);
        EXPECT_THROW(ReadScanInfoReply(ReplyWith("total", value)), std::bad_any_cast);
    }
}

TEST(ScanInfo, AStringIsOnlyAUtf8String)
{
    for (const ValuePtr& value : {MakeValue(1LL), MakeValue(std::string("text")), ValuePtr()}) {
        EXPECT_THROW(ReadScanInfoReply(ReplyWith("locator", value)), std::bad_any_cast);
        EXPECT_THROW(ReadScanInfoReply(ReplyWith("subcomponent", value)), std::bad_any_cast);
    }
}

TEST(ScanInfo, ATextThatIsNoLocatorIsAnEmptyOne)
{
    for (const char* text : {"", "VST", "/vst/a.so", "VST9|/vst/a.so|"})
        EXPECT_TRUE(
            ReadScanInfoReply(ReplyWith("locator", MakeString(std::string_view(text)))).locator.IsEmpty())
            << text;
}

TEST(ScanInfo, ContinueIsReadLeniently)
{
    struct Case
    {
        ValuePtr given;
        bool read;
    };
    for (const Case& each : {Case{MakeValue(true), true},
                             {MakeValue(false), false},
                             {MakeValue(1), true},
                             {MakeValue(-7), true},
                             {MakeValue(0), false},
                             {MakeString(std::string_view("true")), true},
                             {MakeString(std::string_view("false")), false}})
        EXPECT_EQ(ReadScanInfoReply(ReplyWith("continue", each.given)).continues, each.read);
}

TEST(ScanInfo, AContinueStringThatDiffersInLetterCaseOnlyIsABadAnyCast)
{
    for (const char* text : {"True", "FALSE", "fAlse", "", "1", "true "})
        EXPECT_THROW(ReadScanInfoReply(ReplyWith("continue", MakeString(std::string_view(text)))),
                     std::bad_any_cast);
}

TEST(ScanInfo, AContinueOfAnyOtherTypeIsABadAnyCast)
{
    for (const ValuePtr& value :
         {MakeValue(1LL), MakeValue(1ULL), MakeValue(1.0), MakeValue(Object()), ValuePtr()})
        EXPECT_THROW(ReadScanInfoReply(ReplyWith("continue", value)), std::bad_any_cast);
}

TEST(ScanInfo, IsWrittenWithAllFiveKeysInItsOwnTypes)
{
    EXPECT_EQ(zetmarshal::ToJson(BuildScanInfoReply({greeting, L" (sub \u00FC)", 3, 7, true})),
              "{\"value\":{\"continue\":true,\"locator\":\"VST|/vst/gr\xc3\xbc\xc3\x9f.so|\","
              "\"progress\":3,\"subcomponent\":\" (sub \xc3\xbc)\",\"total\":7}}");
    EXPECT_EQ(zetmarshal::ToJson(BuildScanInfoReply({})),
              "{\"value\":{\"continue\":false,\"locator\":\"\",\"progress\":0,\"subcomponent\":\"\","
              "\"total\":0}}");
}

TEST(ScanInfo, IsWrittenWithSigned64BitNumbers)
{
    const ValuePtr record = GetVariantInObject(BuildScanInfoReply({{}, {}, -1, 0x7FFFFFFF, false}), "value");
    EXPECT_EQ(std::any_cast<long long>(*GetVariantInObject(record, "progress")), -1);
    EXPECT_EQ(std::any_cast<long long>(*GetVariantInObject(record, "total")), 0x7FFFFFFF);
}

TEST(DoneReply, IsAnObjectWithoutKeys)
{
    EXPECT_EQ(zetmarshal::ToJson(BuildDoneReply()), "{}");
}

} // namespace
} // namespace zetscanprotocol
