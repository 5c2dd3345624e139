#include "commands/ScanReport.h"

#include <iomanip>
#include <locale>
#include <sstream>

#include "commands/DisplayText.h"

namespace zetaudiopluginmanager {

namespace {

std::string Count(std::size_t count, const std::string& one, const std::string& several)
{
    return std::to_string(count) + " " + (count == 1 ? one : several);
}

std::string FormatEntry(const std::string& verdict, const ScanReport::Entry& entry)
{
    std::string text = verdict + " " + ForTerminal(entry.path) + "\n";
    for (const std::string& line : LinesForTerminal(entry.reason))
        text += "    " + line + "\n";
    return text;
}

std::string FormatSummary(const ScanReport& report)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << Count(report.scanned, "plug-in file", "plug-in files") << " scanned in " << std::fixed
         << std::setprecision(2) << report.seconds << " s"
         << (report.cancelled ? " until the scan was cancelled" : "") << ": "
         << Count(report.found, "plug-in", "plug-ins") << " found, " << report.banned.size() << " banned";
    if (report.gone > 0)
        text << ", " << report.gone << " gone";
    text << ".\n";
    return std::move(text).str();
}

} // namespace

void ScanReport::Add(const ScanReport& other)
{
    scanned += other.scanned;
    found += other.found;
    gone += other.gone;
    banned.insert(banned.end(), other.banned.begin(), other.banned.end());
    failed.insert(failed.end(), other.failed.begin(), other.failed.end());
    seconds += other.seconds;
    cancelled = cancelled || other.cancelled;
    gaveUp = gaveUp || other.gaveUp;
    notScanned.insert(notScanned.end(), other.notScanned.begin(), other.notScanned.end());
}

std::string FormatScanReport(const ScanReport& report, const ReportStyle& style)
{
    std::string text = style.onlyProblems ? std::string() : FormatSummary(report);
    for (const ScanReport::Entry& entry : report.banned)
        text += FormatEntry(style.colour ? "\x1b[31mBanned:\x1b[0m" : "Banned:", entry);
    for (const ScanReport::Entry& entry : report.failed)
        text += FormatEntry("No plug-in:", entry);
    return text;
}

} // namespace zetaudiopluginmanager
