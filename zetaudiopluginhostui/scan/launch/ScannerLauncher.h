#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include <zetcore/filesupport/paths/File.h>
#include <zetcore/filesupport/sharing/MemoryMappedFile.h>
#include <zetscanprotocol/ScanProtocol.h>

#include "scan/launch/PortWait.h"
#include "scan/launch/ScannerProcess.h"

namespace zetaudiopluginhostui {

/// Writes the trace volume for the scanner, and then clears the port of an earlier scanner. `Words` is
/// `BlockWords`; the test has its own.
template<typename Words>
void PrepareForLaunch(Words& words, int traceVolume)
{
    words.Exchange(zetscanprotocol::traceVolumeWord, static_cast<std::uint32_t>(traceVolume));
    words.Exchange(zetscanprotocol::portWord, 0);
}

/// Why a launch gave no port.
struct LaunchFailure
{
    /// A sentence for people (UTF-8), which names the program.
    std::string reason;
};

/// Starts scanner processes and learns their ports through the shared block. Main thread.
///
/// A scanner that lives has 60 seconds to tell its port. A scanner that has ended tells none any more, so the
/// wait ends at once. The wait should be short: meanwhile the host shows no window, and no other host of this
/// user can launch. In each pass the launcher first asks whether the scanner has ended and then reads the
/// port, so a port that the scanner told before its end is used.
class ScannerLauncher
{
  public:
    explicit ScannerLauncher(PortWait portWait);

    /// Starts a scanner, waits for its port and returns the port. Fails when there is no block, no program,
    /// no process or no port. A process that was started is stored in `process`, whose old value is
    /// overwritten. A process that told no port goes on running. Nobody else can launch through the block
    /// meanwhile.
    std::variant<std::uint16_t, LaunchFailure> Launch(ScannerProcess& process);

  private:
    std::optional<LaunchFailure> Start(const zetcore::filesupport::File& program, ScannerProcess& process);
    std::variant<std::uint16_t, LaunchFailure> WaitForPort(const zetcore::filesupport::File& program,
                                                           ScannerProcess process);

    const PortWait portWait;
    zetcore::filesupport::MemoryMappedFile block;
    void* blockAddress = nullptr;
};

} // namespace zetaudiopluginhostui
