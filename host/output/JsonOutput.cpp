#include "output/JsonOutput.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>

#include <boost/json/src.hpp>

#include "output/TimeText.h"
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

boost::json::value JsonTime(std::chrono::seconds sinceEpoch)
{
    const std::string text = TimeText(sinceEpoch);
    return text.empty() ? boost::json::value() : boost::json::value(boost::json::string(text));
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

boost::json::string_view OutcomeWord(ScanOutcome::Status status)
{
    switch (status) {
    case ScanOutcome::Status::Failed:
        return "failed";
    case ScanOutcome::Status::Banned:
        return "banned";
    case ScanOutcome::Status::Unreadable:
        return "unreadable";
    case ScanOutcome::Status::NoPlugin:
        return "noplugin";
    case ScanOutcome::Status::Skipped:
        return "skipped";
    case ScanOutcome::Status::NotScanned:
        return "unscanned";
    case ScanOutcome::Status::Working:
        break;
    }
    return "working";
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
             JsonTime(std::chrono::floor<std::chrono::seconds>(std::chrono::nanoseconds(row.fileTime)))}};
        if (row.status != RowStatus::Working)
            object["reason"] = ForJson(row.reason);
        if (row.IsBanned())
            object["bannedAt"] = JsonTime(std::chrono::seconds(row.bannedAt));
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
                                     {"passedOver", PluginArray(changes.passedOver, true)},
                                     {"unreached", PluginArray(changes.unreached, true)},
                                     {"end", EndWord(report.end.how)},
                                     {"reason", ForJson(report.end.reason)}};
    std::string text = boost::json::serialize(object);
    // The library would write 1.25E0, which people do not like to read.
    text.back() = ',';
    return text + "\"seconds\":" + DecimalText(report.seconds) + "}\n";
}

std::string FormatScanSummaryLine(const ScanReport& report)
{
    return "{\"event\":\"summary\"," + FormatScanReportAsJson(report).substr(1);
}

std::string FormatScanOutcomeLine(const ScanOutcome& outcome)
{
    boost::json::array names;
    for (const std::wstring& name : outcome.names)
        names.push_back(boost::json::string(ForJson(name)));
    const boost::json::object object{
        {"event", "plugin"},
        {"done", outcome.done},
        {"total", outcome.total},
        {"technology", ForJson(zetaudiofilterhost::TechnologyName(outcome.module.GetTechnologyType()))},
        {"path", PathForJson(outcome.module.GetPath())},
        {"status", OutcomeWord(outcome.status)},
        {"reason", ForJson(outcome.reason)},
        {"plugins", std::move(names)}};
    return boost::json::serialize(object) + "\n";
}

} // namespace zetaudiopluginmanager
