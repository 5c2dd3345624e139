#include "scan/ScanReport.h"

#include <algorithm>
#include <iomanip>
#include <locale>
#include <sstream>

#include "terminal/DisplayText.h"

namespace zetaudiopluginmanager {

namespace {

using zetaudiopluginhostui::ScanEnd;

/// The most names of each kind in the last paragraph. The command `list` shows all plug-ins.
constexpr std::size_t mostListed = 10;

std::string Count(std::size_t count, const std::string& one, const std::string& several)
{
    return std::to_string(count) + " " + (count == 1 ? one : several);
}

std::string FormatEntry(const std::string& verdict, const std::wstring& path, const std::string& reason)
{
    std::string text = verdict + " " + ForTerminal(path) + "\n";
    for (const std::string& line : LinesForTerminal(reason))
        text += "    " + line + "\n";
    return text;
}

std::string FormatSummary(const ScanReport& report)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << Count(report.scanned, "plug-in file", "plug-in files") << " scanned in " << std::fixed
         << std::setprecision(2) << report.seconds << " s"
         << (report.Ended(ScanEnd::How::Cancelled) ? " until the scan was cancelled" : "") << ": "
         << Count(report.found, "plug-in", "plug-ins") << " found, " << report.changes.banned.size()
         << " banned";
    if (!report.changes.removed.empty())
        text << ", " << report.changes.removed.size() << " gone";
    text << ".\n";
    return std::move(text).str();
}

/// The first plug-ins with their paths and reasons, and how many there are beside these.
std::string FormatPlugins(const std::vector<ChangedPlugin>& plugins, const std::string& whereAllAre = {})
{
    std::string text;
    for (std::size_t index = 0; index < std::min(plugins.size(), mostListed); ++index) {
        text += "    " + ForTerminal(plugins[index].name) + "  " +
                ForTerminal(plugins[index].locator.GetPath()) + "\n";
        for (const std::string& line : LinesForTerminal(plugins[index].reason))
            text += "        " + line + "\n";
    }
    if (plugins.size() > mostListed)
        text += "    and " + std::to_string(plugins.size() - mostListed) + " more" + whereAllAre + "\n";
    return text;
}

std::string FormatChange(const std::string& what, const std::vector<ChangedPlugin>& plugins)
{
    return plugins.empty()
               ? std::string()
               : what + ": " + Count(plugins.size(), "plug-in", "plug-ins") + "\n" + FormatPlugins(plugins);
}

/// The command `list` shows none of these files.
std::string FormatPassedOver(const std::vector<ChangedPlugin>& files)
{
    return files.empty() ? std::string()
                         : "Passed over: " + Count(files.size(), "file", "files") +
                               ", no plug-in for this system or left out on purpose; looked at again when it "
                               "changes\n" +
                               FormatPlugins(files, " ('zetaudiopluginmanager report -' names them)");
}

/// True for a plug-in that was banned before. It is told once, as one that was tried again.
bool HasTriedInVain(const ScanReport& report, const ChangedPlugin& plugin)
{
    return std::ranges::any_of(report.triedAgain, [&plugin](const ScanReport::TriedAgain& tried) {
        return tried.isStillBanned && tried.plugin.locator == plugin.locator;
    });
}

/// The next step for somebody who has just read what is banned. Empty when nothing is.
std::string FormatAdvice(const ScanReport& report)
{
    const bool anyBanned =
        !report.changes.banned.empty() ||
        std::ranges::any_of(report.triedAgain, [](const auto& tried) { return tried.isStillBanned; });
    return anyBanned
               ? "A banned plug-in is not used until it passes a scan. It is scanned again when its file "
                 "changes, and by\n    zetaudiopluginmanager reload PLUGIN-FILE   (or --all)\n"
               : "";
}

/// The last paragraph. Empty when the list of plug-ins has not changed and no file was passed over.
std::string FormatChanges(const ScanReport& report, bool onlyProblems)
{
    const ScanChanges& changes = report.changes;
    std::string text;
    if (!onlyProblems)
        text += FormatChange("New", changes.added) + FormatChange("Updated", changes.updated);
    text += FormatChange("Gone", changes.removed);
    if (!onlyProblems)
        text += FormatPassedOver(changes.passedOver);
    if (!changes.unreached.empty())
        text += "Not scanned: " + Count(changes.unreached.size(), "plug-in", "plug-ins") +
                (report.Ended(ScanEnd::How::Done) ? "; the next scan tries again\n"
                                                  : "; what was in the list stays in it as it was\n");
    return text;
}

/// True when the user must rather know of the left end than of the right one.
bool IsWorse(ScanEnd::How left, ScanEnd::How right)
{
    const auto rank = [](ScanEnd::How how) {
        switch (how) {
        case ScanEnd::How::Done:
            break;
        case ScanEnd::How::GaveUp:
            return 1;
        case ScanEnd::How::NotStarted:
            return 2;
        case ScanEnd::How::Cancelled:
            return 3;
        }
        return 0;
    };
    return rank(left) > rank(right);
}

} // namespace

bool ScanReport::IsComplete() const noexcept
{
    return !Ended(ScanEnd::How::GaveUp) && !Ended(ScanEnd::How::NotStarted) && changes.unreached.empty();
}

void ScanReport::Add(const ScanReport& other)
{
    scanned += other.scanned;
    found += other.found;
    failed.insert(failed.end(), other.failed.begin(), other.failed.end());
    seconds += other.seconds;
    if (IsWorse(other.end.how, end.how))
        end = other.end;
    changes.Add(other.changes);
    triedAgain.insert(triedAgain.end(), other.triedAgain.begin(), other.triedAgain.end());
}

std::string FormatScanReport(const ScanReport& report, const ReportStyle& style)
{
    const bool withSummary = !style.onlyProblems && !report.Ended(ScanEnd::How::NotStarted);
    std::string text = withSummary ? FormatSummary(report) : std::string();
    for (const ChangedPlugin& plugin : report.changes.banned)
        if (!HasTriedInVain(report, plugin))
            text += FormatEntry(style.colour ? "\x1b[31mBanned:\x1b[0m" : "Banned:", plugin.locator.GetPath(),
                                plugin.reason);
    for (const ScanReport::TriedAgain& tried : report.triedAgain)
        if (!style.onlyProblems || tried.isStillBanned)
            text += FormatEntry(tried.isStillBanned ? "Tried again, still banned:"
                                                    : "Tried again, not banned any more:",
                                tried.plugin.locator.GetPath(), tried.plugin.reason);
    if (style.withAdvice && !style.onlyProblems)
        text += FormatAdvice(report);
    for (const ScanReport::Entry& entry : report.failed)
        text += FormatEntry("No plug-in:", entry.path, entry.reason);
    for (const ChangedPlugin& plugin : report.changes.unreadable)
        text += FormatEntry("Cannot be read:", plugin.locator.GetPath(), plugin.reason);
    const std::string changes = FormatChanges(report, style.onlyProblems);
    return text + (text.empty() || changes.empty() ? "" : "\n") + changes;
}

} // namespace zetaudiopluginmanager
