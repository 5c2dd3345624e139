#pragma once

#include <cstdint>
#include <string>

#include <zetcore/filesupport/paths/File.h>
#include <zetcore/filesupport/sharing/MemoryMappedFile.h>
#include <zetscanprotocol/ScanProtocol.h>

#include "scan/PortWait.h"
#include "scan/ScannerProcess.h"

namespace zetaudiopluginhostui {

/// Leaves the trace volume for the scanner, and then no port of an earlier one. `Words` is `BlockWords`.
template<typename Words>
void PrepareForLaunch(Words& words, int traceVolume)
{
    words.Exchange(zetscanprotocol::traceVolumeWord, static_cast<std::uint32_t>(traceVolume));
    words.Exchange(zetscanprotocol::portWord, 0);
}

/// Starts scanner processes and learns their ports through the shared block. Main thread.
///
/// A scanner that lives has 60 seconds to tell its port. One that has ended tells none any more, so that the
/// wait for it ends at once: meanwhile the host has no window, and no other host of this user can launch.
/// Its end is looked at before the port is read, so a port that it has told is used in either case.
class ScannerLauncher
{
  public:
    explicit ScannerLauncher(PortWait portWait);

    /// Starts one and waits for its port; 0 when there is no block, no program, no process or no port. A
    /// process that was started is stored in `process`, whose old value is overwritten, and goes on when
    /// there was no port. Nobody else can launch through the block meanwhile.
    std::uint16_t Launch(ScannerProcess& process);

    /// Why the last launch gave no port: a sentence for people (UTF-8) that names the program. Empty when it
    /// gave one.
    const std::string& Problem() const noexcept { return problem; }

  private:
    bool Start(const zetcore::filesupport::File& program, ScannerProcess& process);
    std::uint16_t WaitForPort(const zetcore::filesupport::File& program, ScannerProcess process);

    const PortWait portWait;
    zetcore::filesupport::MemoryMappedFile block;
    void* blockAddress = nullptr;
    std::string problem;
};

} // namespace zetaudiopluginhostui
