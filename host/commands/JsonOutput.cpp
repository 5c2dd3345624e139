#include "commands/JsonOutput.h"

#include <algorithm>
#include <array>
#include <charconv>

#include <boost/json/src.hpp>

#include "commands/DisplayText.h"

namespace zetaudiopluginmanager {

namespace {

std::string DecimalText(double value)
{
    std::array<char, 64> digits;
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(),
                                      std::clamp(value, 0.0, 1e12), std::chars_format::fixed, 6);
    return {digits.data(), result.ptr};
}

} // namespace

std::string FormatRowsAsJson(const std::vector<PluginRow>& rows)
{
    std::string text = "[";
    for (const PluginRow& row : rows) {
        boost::json::object object{
            {"technology", ForJson(zetaudiofilterhost::TechnologyName(row.locator.GetTechnologyType()))},
            {"path", PathForJson(row.locator.GetPath())},
            {"subcomponent", PathForJson(row.locator.GetSubcomponent())},
            {"name", ForJson(row.name)},
            {"version", ForJson(row.version)},
            {"vendor", ForJson(row.vendor)},
            {"enabled", row.enabled},
            {"effect", row.effect},
            {"status", row.banned ? "banned" : "working"}};
        if (row.banned)
            object["reason"] = ForJson(row.reason);
        text += (text.size() == 1 ? "\n  " : ",\n  ") + boost::json::serialize(object);
    }
    return text + (rows.empty() ? "]\n" : "\n]\n");
}

std::string FormatScanReportAsJson(const ScanReport& report)
{
    boost::json::array banned;
    for (const ScanReport::Entry& entry : report.banned)
        banned.emplace_back(PathForJson(entry.path));
    const boost::json::object object{
        {"scanned", report.scanned}, {"found", report.found}, {"banned", std::move(banned)}};
    std::string text = boost::json::serialize(object);
    // The library writes 1.25E0, which is right but nothing to read.
    text.back() = ',';
    return text + "\"seconds\":" + DecimalText(report.seconds) + "}\n";
}

} // namespace zetaudiopluginmanager
