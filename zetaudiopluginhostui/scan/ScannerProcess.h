#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <zetcore/filesupport/paths/File.h>

namespace zetaudiopluginhostui {

/// A scanner process that was started, or none. A plain handle: nothing happens to the process when it goes
/// away or is overwritten.
struct ScannerProcess
{
    std::uintptr_t handle = 0;

    explicit operator bool() const noexcept { return handle != 0; }
};

/// How a scanner process has ended, for people (UTF-8).
struct ScannerProcessEnd
{
    /// Follows the program's name: "ended with exit status 127".
    std::string status;
    /// The last line that it wrote to standard error; empty on Windows, where that is not caught.
    std::string lastOutput;
};

/// The scanner program's file name on this system.
std::wstring ScannerFileName();

/// Starts the program without arguments and without a window, with this process's environment and current
/// folder and none of its open files. What it writes to standard error goes to ours. Throws `file_exception`
/// with the system's words when the system refuses. Any thread.
ScannerProcess StartScannerProcess(const zetcore::filesupport::File& program);

/// How a process that has ended did so, or nothing while it runs. It stays to be collected. Any thread.
std::optional<ScannerProcessEnd> FindScannerProcessEnd(ScannerProcess process);

/// Ends it at once, if it still runs, and gives the handle up. Any thread.
void EndScannerProcess(ScannerProcess process);

} // namespace zetaudiopluginhostui
