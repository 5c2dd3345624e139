#include "commands/JsonOutput.h"

#include <cmath>

#include <boost/json/src.hpp>

#include "commands/DisplayText.h"

namespace zetaudiopluginmanager {

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
    // Microseconds are enough, and keep the number free of a long tail of digits.
    const auto microseconds = std::llround(report.seconds * 1e6);
    const boost::json::object object{{"scanned", report.scanned},
                                     {"found", report.found},
                                     {"banned", std::move(banned)},
                                     {"seconds", static_cast<double>(microseconds) / 1e6}};
    return boost::json::serialize(object) + "\n";
}

} // namespace zetaudiopluginmanager
