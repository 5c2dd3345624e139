#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zetaudiopluginmanager {

/// What came of one scan.
struct ScanReport
{
    struct Entry
    {
        std::wstring path;
        /// UTF-8; empty when it is not known.
        std::string reason;

        friend bool operator==(const Entry&, const Entry&) = default;
    };

    /// Plug-in files that the scan has dealt with, banned ones included.
    std::size_t scanned = 0;
    /// Plug-ins that work; a shell counts once for each that it holds.
    std::size_t found = 0;
    /// Known before, and gone since.
    std::size_t gone = 0;
    /// Banned by this scan.
    std::vector<Entry> banned;
    /// Files that load but gave no plug-in.
    std::vector<Entry> failed;
    double seconds = 0;
    bool cancelled = false;
    /// The scanner process kept failing, and the scan ended before everything was scanned.
    bool gaveUp = false;
    /// The scanner process could not load these, through no fault of theirs; the next scan tries them again.
    std::vector<Entry> notScanned;

    /// False when the scanner process kept some plug-ins from being scanned.
    bool IsComplete() const noexcept { return !gaveUp && notScanned.empty(); }

    void Add(const ScanReport& other);
    friend bool operator==(const ScanReport&, const ScanReport&) = default;
};

struct ReportStyle
{
    bool colour = false;
    /// Leaves out what went well.
    bool onlyProblems = false;
};

/// The summary for people; several lines, valid UTF-8 that a terminal shows as it is.
std::string FormatScanReport(const ScanReport& report, const ReportStyle& style);

} // namespace zetaudiopluginmanager
