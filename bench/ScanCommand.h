#pragma once

#include <filesystem>
#include <string>

namespace bench {

/// One call of the host program's command `scan`.
struct ScanCommand
{
    /// The folder of the program.
    std::filesystem::path programs;
    std::filesystem::path modules;
    /// A new preferences folder.
    std::string prefs;
    /// 0 leaves the choice to the scanner.
    int jobs = 0;
    /// The seconds that a plug-in may take; 0 for the default.
    int timeout = 0;
};

struct ScanTime
{
    /// From the start of the program to its end.
    double seconds = 0;
    int scanned = 0;
    /// The others of those scanned were banned.
    int found = 0;
};

/// Throws `std::runtime_error` when the scan does not end well.
ScanTime RunScanCommand(const ScanCommand& command);

} // namespace bench
