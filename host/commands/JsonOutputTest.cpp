#include "commands/JsonOutput.h"

#include <boost/json.hpp>
#include <gtest/gtest.h>

namespace zetaudiopluginmanager {

namespace {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;

TEST(JsonOutput, AnEmptyListIsAnEmptyArray)
{
    EXPECT_EQ(FormatRowsAsJson({}), "[]\n");
}

TEST(JsonOutput, AWorkingPluginHasItsFieldsInOrderAndNoReason)
{
    const PluginRow row{PluginLocator(TechnologyType::VST, L"/p/shell.so", L"Sub \"A\""),
                        L"Name",
                        L"1.0",
                        L"Maker",
                        true,
                        false,
                        false,
                        {}};
    EXPECT_EQ(FormatRowsAsJson({row}),
              "[\n"
              R"(  {"technology":"VST","path":"/p/shell.so","subcomponent":"Sub \"A\"","name":"Name",)"
              R"("version":"1.0","vendor":"Maker","enabled":true,"effect":false,"status":"working"})"
              "\n]\n");
}

TEST(JsonOutput, ABannedPluginSaysWhy)
{
    PluginRow row;
    row.locator = PluginLocator(TechnologyType::VST3, L"/p/bad.vst3");
    row.name = L"bad.vst3";
    row.banned = true;
    row.reason = "first\nsecond";
    const auto value = boost::json::parse(FormatRowsAsJson({row, row}));
    ASSERT_EQ(value.as_array().size(), 2u);
    const auto& object = value.as_array()[1].as_object();
    EXPECT_EQ(object.at("technology"), "VST3");
    EXPECT_EQ(object.at("status"), "banned");
    EXPECT_EQ(object.at("reason"), "first\nsecond");
    EXPECT_EQ(object.at("enabled"), false);
}

TEST(JsonOutput, AReasonThatIsNotKnownIsEmpty)
{
    PluginRow row;
    row.locator = PluginLocator(TechnologyType::VST, L"/p/bad.so");
    row.banned = true;
    const auto value = boost::json::parse(FormatRowsAsJson({row}));
    EXPECT_EQ(value.as_array()[0].as_object().at("reason"), "");
}

TEST(JsonOutput, AnyUnitsMakeValidJson)
{
    std::wstring everything;
    for (wchar_t unit = 1; unit < 0x180; ++unit)
        everything += unit;
    everything += static_cast<wchar_t>(0xDCFF);
    everything += static_cast<wchar_t>(0xD800);
    PluginRow row;
    row.locator = PluginLocator(TechnologyType::VST, everything, everything);
    row.name = row.version = row.vendor = everything;
    row.banned = true;
    row.reason = "\xff\xfe\x01";
    const auto value = boost::json::parse(FormatRowsAsJson({row}));
    const std::string path(value.as_array()[0].as_object().at("path").as_string());
    EXPECT_NE(path.find("%uDCFF"), std::string::npos);
}

TEST(JsonOutput, TheScanIsOneObject)
{
    ScanReport report;
    report.scanned = 12;
    report.found = 9;
    report.banned = {{L"/a.so", "why"}, {L"/b.vst3", ""}};
    report.seconds = 1.25;
    EXPECT_EQ(FormatScanReportAsJson(report),
              R"({"scanned":12,"found":9,"banned":["/a.so","/b.vst3"],"seconds":1.250000})"
              "\n");
    const auto value = boost::json::parse(FormatScanReportAsJson(ScanReport{}));
    EXPECT_EQ(value.as_object().at("banned"), boost::json::array());
    EXPECT_TRUE(value.as_object().at("seconds").is_double());
}

} // namespace

} // namespace zetaudiopluginmanager
