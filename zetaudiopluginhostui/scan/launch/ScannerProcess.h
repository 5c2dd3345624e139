#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <zetcore/filesupport/paths/File.h>

#include "scan/launch/ScannerProcessEnd.h"

namespace zetaudiopluginhostui {

/// A scanner process that was started, or none. This is a plain handle. Nothing happens to the process when
/// the handle is dropped or overwritten.
struct ScannerProcess
{
    std::uintptr_t handle = 0;

    explicit operator bool() const noexcept { return handle != 0; }
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
