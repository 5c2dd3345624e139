#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <zetcore/filesupport/File.h>

namespace zetaudiopluginhostui {

/// A scanner process that was started, or none. A plain handle: nothing happens to the process when it goes
/// away or is overwritten.
struct ScannerProcess
{
    std::uintptr_t handle = 0;

    explicit operator bool() const noexcept { return handle != 0; }
};

/// The scanner program's file name on this system.
std::wstring ScannerFileName();

/// Starts the program without arguments and without a window, with this process's environment and current
/// folder and none of its open files but standard error. Throws `file_exception` with the system's words when
/// the system refuses. Any thread.
ScannerProcess StartScannerProcess(const zetcore::filesupport::File& program);

/// How a process that has ended did so, in words that follow its name (UTF-8): "ended with exit status 127".
/// Nothing while it runs. It stays to be collected. Any thread.
std::optional<std::string> ScannerProcessEnd(ScannerProcess process);

/// Ends it at once, if it still runs, and gives the handle up. Any thread.
void EndScannerProcess(ScannerProcess process);

} // namespace zetaudiopluginhostui
