#include "output/JsonOutput.h"

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
    PluginRow row;
    row.locator = PluginLocator(TechnologyType::VST, L"/p/shell.so", L"Sub \"A\"");
    row.name = L"Name";
    row.version = L"1.0";
    row.vendor = L"Maker";
    row.id = L"1718449267";
    row.category = L"Fx|EQ";
    row.enabled = true;
    row.instrument = true;
    row.fileTime = 1'924'992'000'999'999'999;
    EXPECT_EQ(FormatRowsAsJson({row}),
              "[\n"
              R"(  {"technology":"VST","path":"/p/shell.so","subcomponent":"Sub \"A\"","name":"Name",)"
              R"("version":"1.0","vendor":"Maker","id":"1718449267","category":"Fx|EQ","enabled":true,)"
              R"("effect":false,"instrument":true,"status":"working","fileTime":"2031-01-01T00:00:00Z"})"
              "\n]\n");
}

TEST(JsonOutput, ABannedPluginSaysWhy)
{
    PluginRow row;
    row.locator = PluginLocator(TechnologyType::VST3, L"/p/bad.vst3");
    row.name = L"bad.vst3";
    row.status = RowStatus::Banned;
    row.reason = "first\nsecond";
    row.bannedAt = 1'709'251'199;
    const auto value = boost::json::parse(FormatRowsAsJson({row, row}));
    ASSERT_EQ(value.as_array().size(), 2u);
    const auto& object = value.as_array()[1].as_object();
    EXPECT_EQ(object.at("technology"), "VST3");
    EXPECT_EQ(object.at("status"), "banned");
    EXPECT_EQ(object.at("reason"), "first\nsecond");
    EXPECT_EQ(object.at("enabled"), false);
    EXPECT_EQ(object.at("bannedAt"), "2024-02-29T23:59:59Z");
    EXPECT_TRUE(object.at("fileTime").is_null());
}

TEST(JsonOutput, ATimeThatIsNotKnownOrCannotBeIsNull)
{
    PluginRow row;
    row.status = RowStatus::Banned;
    const auto bannedAt = [&row](std::int64_t seconds) {
        row.bannedAt = seconds;
        return boost::json::parse(FormatRowsAsJson({row})).as_array()[0].as_object().at("bannedAt");
    };
    for (const std::int64_t seconds :
         {std::int64_t{0}, std::int64_t{-1}, INT64_MIN, INT64_MAX, std::int64_t{253'402'300'800}})
        EXPECT_TRUE(bannedAt(seconds).is_null()) << seconds;
    EXPECT_EQ(bannedAt(1), "1970-01-01T00:00:01Z");
    EXPECT_EQ(bannedAt(253'402'300'799), "9999-12-31T23:59:59Z");
}

TEST(JsonOutput, EachStatusHasItsWordAndItsReason)
{
    const std::pair<RowStatus, const char*> words[] = {{RowStatus::Failed, "failed"},
                                                       {RowStatus::Unreadable, "unreadable"},
                                                       {RowStatus::NotScanned, "unscanned"}};
    for (const auto& [status, word] : words) {
        PluginRow row;
        row.status = status;
        row.reason = "why";
        const auto value = boost::json::parse(FormatRowsAsJson({row}));
        const auto& object = value.as_array()[0].as_object();
        EXPECT_EQ(object.at("status"), word);
        EXPECT_EQ(object.at("reason"), "why");
        EXPECT_FALSE(object.contains("bannedAt"));
    }
}

TEST(JsonOutput, AReasonThatIsNotKnownIsEmpty)
{
    PluginRow row;
    row.locator = PluginLocator(TechnologyType::VST, L"/p/bad.so");
    row.status = RowStatus::Banned;
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
    row.status = RowStatus::Banned;
    row.reason = "\xff\xfe\x01";
    const auto value = boost::json::parse(FormatRowsAsJson({row}));
    const std::string path(value.as_array()[0].as_object().at("path").as_string());
    EXPECT_NE(path.find("%uDCFF"), std::string::npos);
}

ChangedPlugin NamedPlugin(const std::wstring& name, const std::string& reason = {})
{
    return {PluginLocator(TechnologyType::VST3, L"/" + name, L"sub"), name, reason};
}

TEST(JsonOutput, TheScanIsOneObject)
{
    ScanReport report;
    report.scanned = 12;
    report.found = 9;
    report.changes.banned = {NamedPlugin(L"a", "why")};
    report.changes.unreadable = {{{TechnologyType::Unknown, L"/folder"}, L"/folder", "no"}};
    report.seconds = 1.25;
    report.end = {zetaudiopluginhostui::ScanEnd::How::GaveUp, "again"};
    EXPECT_EQ(
        FormatScanReportAsJson(report),
        R"({"scanned":12,"found":9,"added":[],"updated":[],"removed":[],"banned":[{"technology":"VST3",)"
        R"("path":"/a","subcomponent":"sub","name":"a","reason":"why"}],"triedAgain":[],)"
        R"("unreadable":[{"technology":"","path":"/folder","subcomponent":"","name":"/folder",)"
        R"("reason":"no"}],"passedOver":[],"unreached":[],"end":"gaveup","reason":"again","seconds":1.250000})"
        "\n");
    const auto value = boost::json::parse(FormatScanReportAsJson(ScanReport{}));
    EXPECT_EQ(value.as_object().at("banned"), boost::json::array());
    EXPECT_EQ(value.as_object().at("end"), "done");
    EXPECT_TRUE(value.as_object().at("seconds").is_double());
}

TEST(JsonOutput, EachArrayOfTheScanHasItsPlugins)
{
    ScanReport report;
    report.changes.added = {NamedPlugin(L"added")};
    report.changes.updated = {NamedPlugin(L"updated")};
    report.changes.removed = {NamedPlugin(L"removed")};
    report.changes.banned = {NamedPlugin(L"banned", "1")};
    report.changes.unreadable = {NamedPlugin(L"unreadable", "2")};
    report.changes.passedOver = {NamedPlugin(L"passedOver", "5")};
    report.changes.unreached = {NamedPlugin(L"unreached", "3")};
    report.triedAgain = {{NamedPlugin(L"triedAgain", "4"), true}, {NamedPlugin(L"other"), false}};
    using zetaudiopluginhostui::ScanEnd;
    const std::pair<ScanEnd::How, const char*> ends[] = {{ScanEnd::How::Cancelled, "cancelled"},
                                                         {ScanEnd::How::NotStarted, "notstarted"}};
    for (const auto& [how, word] : ends) {
        report.end.how = how;
        const auto value = boost::json::parse(FormatScanReportAsJson(report));
        EXPECT_EQ(value.as_object().at("end"), word);
        for (const char* name :
             {"added", "updated", "removed", "banned", "triedAgain", "unreadable", "passedOver", "unreached"})
            EXPECT_EQ(value.as_object().at(name).as_array()[0].as_object().at("name"), name);
        for (const char* name : {"banned", "triedAgain", "unreadable", "passedOver", "unreached"})
            EXPECT_NE(value.as_object().at(name).as_array()[0].as_object().at("reason"), "") << name;
        const auto& tried = value.as_object().at("triedAgain").as_array();
        EXPECT_EQ(tried[0].as_object().at("isStillBanned"), true);
        EXPECT_EQ(tried[1].as_object().at("isStillBanned"), false);
    }
}

TEST(JsonOutput, AScanThatTellsItsProgressHasALineForEachFileAndASummary)
{
    ScanOutcome outcome;
    outcome.module = PluginLocator(TechnologyType::VST3, L"/p/a \"b\".vst3");
    outcome.status = ScanOutcome::Status::Banned;
    outcome.reason = "first\nsecond";
    outcome.done = 2;
    outcome.total = 7;
    EXPECT_EQ(FormatScanOutcomeLine(outcome),
              R"({"event":"plugin","done":2,"total":7,"technology":"VST3","path":"/p/a \"b\".vst3",)"
              R"("status":"banned","reason":"first\nsecond","plugins":[]})"
              "\n");
    outcome.status = ScanOutcome::Status::Working;
    outcome.names = {L"One", L"Two"};
    const auto working = boost::json::parse(FormatScanOutcomeLine(outcome)).as_object();
    EXPECT_EQ(working.at("status"), "working");
    EXPECT_EQ(working.at("plugins"), boost::json::array({"One", "Two"}));
    const std::string summary = FormatScanSummaryLine({});
    EXPECT_EQ(boost::json::parse(summary).as_object().at("event"), "summary");
    EXPECT_EQ(boost::json::parse(summary).as_object().at("end"), "done");
    EXPECT_EQ(summary.find('\n'), summary.size() - 1);
}

} // namespace

} // namespace zetaudiopluginmanager
