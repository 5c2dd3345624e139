#include <any>

#include <gmock/gmock.h>
#include <zetmarshal/JsonValue.h>
#include <zetscanprotocol/ScanInfo.h>
#include <zetscanprotocol/ScanProtocol.h>
#include <zetscanprotocol/ScanRequests.h>

namespace zetscanprotocol {
namespace {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;
using zetcore::serialization::Array;
using zetcore::serialization::Call;
using zetcore::serialization::ValuePtr;

ValuePtr OverTheWire(const ValuePtr& value)
{
    return zetmarshal::FromJson(zetmarshal::ToJson(value));
}

/// The arguments as the side that answers `method` gets them.
Array Received(const Call& call, const char* method)
{
    EXPECT_EQ(call.method, method);
    return std::any_cast<Array>(*OverTheWire(call.arguments));
}

TEST(ScanMessages, WhatOneSideWritesTheOtherReads)
{
    const std::wstring odd = L"/o\"d'd <&> | % \n\t\xDC81\x00E9\U0001F39B/";
    for (const bool flag : {false, true}) {
        const ConnectArguments arguments{
            odd + L"plugins", odd + L"banned", odd + L"permanent", odd + L"plugins.scan", flag, !flag};
        EXPECT_EQ(ReadConnect(Received(BuildConnect(arguments), connectMethod)), arguments);
    }

    const std::vector<PluginLocator> locators{{TechnologyType::VST3, odd},
                                              {TechnologyType::VST, odd, L"a|b"},
                                              {TechnologyType::AU, L"/third"},
                                              {TechnologyType::VST, odd, L"a|b"}};
    for (const auto& list : {locators, std::vector<PluginLocator>()})
        EXPECT_EQ(ReadBeginScanForPlugins(Received(BuildBeginScanForPlugins(list), beginScanMethod)), list);

    ReadGetScanInfo(Received(BuildGetScanInfo(), getScanInfoMethod));
    ReadScanOneEntity(Received(BuildScanOneEntity(), scanOneEntityMethod));

    for (const ScanInfo& info :
         {ScanInfo{}, {locators[1], odd, 1, 2, true}, {locators[0], {}, 0x7FFFFFFF, -0x7FFFFFFF - 1, false}})
        EXPECT_EQ(ReadScanInfoReply(OverTheWire(BuildScanInfoReply(info))), info);
}

TEST(ScanMessages, EveryMethodIsAmongThoseToBeAnswered)
{
    EXPECT_THAT(methods, testing::UnorderedElementsAre(testing::StrEq(BuildConnect({}).method),
                                                       testing::StrEq(BuildBeginScanForPlugins({}).method),
                                                       testing::StrEq(BuildGetScanInfo().method),
                                                       testing::StrEq(BuildScanOneEntity().method)));
}

} // namespace
} // namespace zetscanprotocol
