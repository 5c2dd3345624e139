#pragma once

#include <cstdint>

#include <zetcore/filesupport/MemoryMappedFile.h>

#include "scan/PortWait.h"
#include "scan/ScannerProcess.h"

namespace zetaudiopluginhostui {

/// Starts scanner processes and learns their ports through the shared block. Main thread.
class ScannerLauncher
{
  public:
    explicit ScannerLauncher(PortWait portWait);

    /// Starts one and waits at most 60 seconds for its port; 0 when there is no block, no program, no process
    /// or no port. A process that was started is stored in `process`, whose old value is overwritten, and
    /// goes on when there was no port. Nobody else can launch through the block meanwhile.
    std::uint16_t Launch(ScannerProcess& process);

  private:
    bool Start(ScannerProcess& process);
    std::uint16_t WaitForPort();

    const PortWait portWait;
    zetcore::filesupport::MemoryMappedFile block;
    void* blockAddress = nullptr;
};

} // namespace zetaudiopluginhostui
