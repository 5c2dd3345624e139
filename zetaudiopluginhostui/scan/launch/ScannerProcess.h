#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <zetcore/filesupport/paths/File.h>

namespace zetaudiopluginhostui {

/// A scanner process that was started, or none. This is a plain handle. Nothing happens to the process when
/// the handle is dropped or overwritten.
struct ScannerProcess
{
    std::uintptr_t handle = 0;

    explicit operator bool() const noexcept { return handle != 0; }
};

/// How a scanner process has ended, for people (UTF-8).
struct ScannerProcessEnd
{
    /// A text that follows the program's name: "ended with exit status 127".
    std::string status;
    /// The last line that the process wrote to standard error. Empty on Windows, where that is not caught.
    std::string lastOutput;
};

/// The scanner program's file name on this system.
std::wstring ScannerFileName();

/// Starts the program without arguments and without a window. The program gets this process's environment and
/// current folder, and none of its open files. Its standard error goes to ours. Throws `file_exception` with
/// the system's words when the system refuses. Any thread.
ScannerProcess StartScannerProcess(const zetcore::filesupport::File& program);

/// Tells how a process has ended, or nothing while it runs. The ended process is not collected. Any thread.
std::optional<ScannerProcessEnd> FindScannerProcessEnd(ScannerProcess process);

/// Ends the process at once if it still runs, and gives the handle up. Any thread.
void EndScannerProcess(ScannerProcess process);

} // namespace zetaudiopluginhostui
