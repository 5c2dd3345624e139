#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <zetaudiopluginhostui/ScanEnd.h>

#include "scan/ScanChanges.h"

namespace zetaudiopluginmanager {

/// The results of one scan, or of several.
struct ScanReport
{
    struct Entry
    {
        std::wstring path;
        /// UTF-8. Empty when the reason is not known.
        std::string reason;

        friend bool operator==(const Entry&, const Entry&) = default;
    };
    /// A banned plug-in that the scan has tried again.
    struct TriedAgain
    {
        ChangedPlugin plugin;
        bool isStillBanned = false;

        friend bool operator==(const TriedAgain&, const TriedAgain&) = default;
    };

    /// Plug-in files that the scan has dealt with, banned ones included.
    std::size_t scanned = 0;
    /// Plug-ins that work; a shell counts once for each that it holds.
    std::size_t found = 0;
    /// Files that load but gave no plug-in.
    std::vector<Entry> failed;
    double seconds = 0;
    /// The end of the scan. After several scans, it is the worst end.
    zetaudiopluginhostui::ScanEnd end;
    /// `banned` in it holds the plug-ins that this scan has banned, again or for the first time.
    ScanChanges changes;
    std::vector<TriedAgain> triedAgain;

    bool Ended(zetaudiopluginhostui::ScanEnd::How how) const noexcept { return end.how == how; }
    /// False when the scanner process kept some plug-ins from being scanned.
    bool IsComplete() const noexcept;

    void Add(const ScanReport& other);
    friend bool operator==(const ScanReport&, const ScanReport&) = default;
};

struct ReportStyle
{
    bool colour = false;
    /// Leaves out what went well.
    bool onlyProblems = false;
    /// Says below the banned plug-ins how they are tried again.
    bool withAdvice = false;
};

/// The summary for people. Its last paragraph tells what has changed in the list of plug-ins, and what was
/// passed over. The text has several lines of valid UTF-8 that a terminal shows as they are.
std::string FormatScanReport(const ScanReport& report, const ReportStyle& style);

} // namespace zetaudiopluginmanager
