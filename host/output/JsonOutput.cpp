#include "output/JsonOutput.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <iomanip>
#include <locale>
#include <sstream>

#include <boost/json/src.hpp>

#include "terminal/DisplayText.h"

namespace zetaudiopluginmanager {

namespace {

using zetaudiopluginhostui::ScanEnd;

std::string DecimalText(double value)
{
    std::array<char, 64> digits;
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(),
                                      std::clamp(value, 0.0, 1e12), std::chars_format::fixed, 6);
    return {digits.data(), result.ptr};
}

boost::json::string_view StatusWord(RowStatus status)
{
    switch (status) {
    case RowStatus::Banned:
        return "banned";
    case RowStatus::Failed:
        return "failed";
    case RowStatus::Unreadable:
        return "unreadable";
    case RowStatus::NotScanned:
        return "unscanned";
    case RowStatus::Working:
        break;
    }
    return "working";
}

/// The time as JSON. Null for an unknown time, and for a year that has not four digits.
boost::json::value TimeText(std::chrono::seconds sinceEpoch)
{
    constexpr std::chrono::sys_days end = std::chrono::year(10000) / 1 / 1;
    const std::chrono::sys_seconds time(sinceEpoch);
    if (sinceEpoch.count() <= 0 || time >= end)
        return nullptr;
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::setfill('0') << std::setw(4) << static_cast<int>(date.year()) << '-' << std::setw(2)
         << static_cast<unsigned>(date.month()) << '-' << std::setw(2) << static_cast<unsigned>(date.day())
         << 'T' << std::setw(2) << clock.hours().count() << ':' << std::setw(2) << clock.minutes().count()
         << ':' << std::setw(2) << clock.seconds().count() << 'Z';
    return boost::json::string(text.str());
}

boost::json::object PluginObject(const ChangedPlugin& plugin, bool withReason)
{
    boost::json::object object{
        {"technology", ForJson(zetaudiofilterhost::TechnologyName(plugin.locator.GetTechnologyType()))},
        {"path", PathForJson(plugin.locator.GetPath())},
        {"subcomponent", PathForJson(plugin.locator.GetSubcomponent())},
        {"name", ForJson(plugin.name)}};
    if (withReason)
        object["reason"] = ForJson(plugin.reason);
    return object;
}

boost::json::array PluginArray(const std::vector<ChangedPlugin>& plugins, bool withReasons)
{
    boost::json::array array;
    for (const ChangedPlugin& plugin : plugins)
        array.push_back(PluginObject(plugin, withReasons));
    return array;
}

boost::json::string_view EndWord(ScanEnd::How how)
{
    switch (how) {
    case ScanEnd::How::Cancelled:
        return "cancelled";
    case ScanEnd::How::NotStarted:
        return "notstarted";
    case ScanEnd::How::GaveUp:
        return "gaveup";
    case ScanEnd::How::Done:
        break;
    }
    return "done";
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
            {"id", ForJson(row.id)},
            {"category", ForJson(row.category)},
            {"enabled", row.enabled},
            {"effect", row.effect},
            {"instrument", row.instrument},
            {"status", StatusWord(row.status)},
            {"fileTime",
             TimeText(std::chrono::floor<std::chrono::seconds>(std::chrono::nanoseconds(row.fileTime)))}};
        if (row.status != RowStatus::Working)
            object["reason"] = ForJson(row.reason);
        if (row.IsBanned())
            object["bannedAt"] = TimeText(std::chrono::seconds(row.bannedAt));
        text += (text.size() == 1 ? "\n  " : ",\n  ") + boost::json::serialize(object);
    }
    return text + (rows.empty() ? "]\n" : "\n]\n");
}

std::string FormatScanReportAsJson(const ScanReport& report)
{
    boost::json::array triedAgain;
    for (const ScanReport::TriedAgain& tried : report.triedAgain) {
        boost::json::object object = PluginObject(tried.plugin, tried.isStillBanned);
        object["isStillBanned"] = tried.isStillBanned;
        triedAgain.push_back(std::move(object));
    }
    const ScanChanges& changes = report.changes;
    const boost::json::object object{{"scanned", report.scanned},
                                     {"found", report.found},
                                     {"added", PluginArray(changes.added, false)},
                                     {"updated", PluginArray(changes.updated, false)},
                                     {"removed", PluginArray(changes.removed, true)},
                                     {"banned", PluginArray(changes.banned, true)},
                                     {"triedAgain", std::move(triedAgain)},
                                     {"unreadable", PluginArray(changes.unreadable, true)},
                                     {"unreached", PluginArray(changes.unreached, true)},
                                     {"end", EndWord(report.end.how)},
                                     {"reason", ForJson(report.end.reason)}};
    std::string text = boost::json::serialize(object);
    // The library would write 1.25E0, which people do not like to read.
    text.back() = ',';
    return text + "\"seconds\":" + DecimalText(report.seconds) + "}\n";
}

} // namespace zetaudiopluginmanager
