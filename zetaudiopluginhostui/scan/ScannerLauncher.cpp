#include "scan/ScannerLauncher.h"

#include <utility>

#include <zetcore/debug/Trace.h>
#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/string/Utf.h>
#include <zetscanprotocol/ScanProtocol.h>

#include "scan/BlockWords.h"
#include "scan/ScanTrace.h"

namespace zetaudiopluginhostui {

namespace {

namespace filesupport = zetcore::filesupport;
namespace protocol = zetscanprotocol;
using zetcore::debug::FaultPoint;

constexpr std::chrono::seconds portTimeout{60};
constexpr std::uint32_t portMask = 0xFFFF;

std::string PathText(const filesupport::File& program)
{
    return zetcore::string::UTF16to8(zetcore::string::ForDisplay(program.FullPath()));
}

std::string WhyNoPort(const filesupport::File& program, const std::optional<ScannerProcessEnd>& end)
{
    if (!end)
        return "The scanner program did not tell within " + std::to_string(portTimeout.count()) +
               " seconds where it listens: " + PathText(program);
    return "The scanner program " + end->status + " before it told where it listens: " + PathText(program) +
           (end->lastOutput.empty() ? std::string() : "; its last output: " + end->lastOutput);
}

/// Gives up the block's handle, and with it the launch lock, whichever way the launch ends.
class LaunchLock
{
  public:
    explicit LaunchLock(filesupport::MemoryMappedFile& mappedBlock) : block(mappedBlock) {}
    ~LaunchLock() { block.CloseFileHandleIfPossible(); }
    LaunchLock(const LaunchLock&) = delete;
    LaunchLock& operator=(const LaunchLock&) = delete;

  private:
    filesupport::MemoryMappedFile& block;
};

} // namespace

ScannerLauncher::ScannerLauncher(PortWait wait) : portWait(std::move(wait)) {}

std::uint16_t ScannerLauncher::Launch(ScannerProcess& process)
{
    problem.clear();
    const bool mapped =
        block.Init(protocol::blockName, protocol::blockSize, filesupport::MemoryMappedFile::CreateLocked);
    blockAddress = mapped ? block.GetAddress() : nullptr;
    if (!blockAddress) {
        problem = std::string("The shared memory \"") + protocol::blockName +
                  "\" in which the scanner tells where it listens cannot be had, or another application "
                  "holds it";
        return 0;
    }
    const LaunchLock launchLock(block);
    const filesupport::File program(filesupport::commondirs::ExecutableDir(), ScannerFileName());
    return Start(program, process) ? WaitForPort(program, process) : std::uint16_t{0};
}

bool ScannerLauncher::Start(const filesupport::File& program, ScannerProcess& process)
{
    const int volume = zetcore::debug::GetMasterTraceVolume();
    static ScanTraceSite volumeSite;
    volumeSite.Write("Writing trace volume, volume: ", volume);
    BlockWords words(blockAddress);
    PrepareForLaunch(words, volume);

    if (!program.Exists()) {
        problem = "There is no scanner program: " + PathText(program);
        return false;
    }
    static ScanTraceSite launchSite;
    launchSite.Write("Launching scan server");
    FaultPoint("host.launching");
    try {
        // A handle left from an earlier run is overwritten and not closed.
        process = StartScannerProcess(program);
    } catch (const filesupport::file_exception& error) {
        problem = error.what();
        return false;
    }
    FaultPoint("host.launched");
    return true;
}

std::uint16_t ScannerLauncher::WaitForPort(const filesupport::File& program, ScannerProcess process)
{
    static ScanTraceSite retrieveSite;
    retrieveSite.Write("Retrieve server's port");
    const auto start = portWait.now();
    const PortWait::Pause pause = portWait.startPauses();
    std::optional<ScannerProcessEnd> processEnd;
    const BlockWords words(blockAddress);
    std::uint32_t word = 0;
    PortWait::Clock::duration waited{};
    for (;;) {
        processEnd = portWait.findEnd(process);
        word = words.Load(protocol::portWord);
        waited = portWait.now() - start;
        if ((word & portMask) != 0 || waited > portTimeout || processEnd)
            break;
        pause();
    }
    if (waited > portTimeout) {
        static ScanTraceSite timeoutSite;
        timeoutSite.Write("Timeout while launching scan server");
    }
    FaultPoint("host.port-read");
    // A port that came in the last pass is still good: only a missing one fails.
    const auto port = static_cast<std::uint16_t>(word & portMask);
    if (port == 0)
        problem = WhyNoPort(program, processEnd);
    return port;
}

} // namespace zetaudiopluginhostui
