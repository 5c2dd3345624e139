#include "scan/launch/ScannerLauncher.h"

#include <utility>

#include <zetaudiopluginhost/ReasonSentences.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/string/Utf.h>
#include <zetcore/threads/MainThread.h>
#include <zetscanprotocol/ScanProtocol.h>

#include "scan/ScanTrace.h"
#include "scan/launch/BlockWords.h"
#include "scan/launch/ScannerPlace.h"

namespace zetaudiopluginhostui {

namespace {

namespace filesupport = zetcore::filesupport;
namespace reasons = zetaudiopluginhost::reasons;
namespace protocol = zetscanprotocol;
using zetcore::debug::FaultPoint;

constexpr std::chrono::seconds portTimeout{60};
constexpr std::uint32_t portMask = 0xFFFF;

std::string PathText(const filesupport::File& program)
{
    return zetcore::string::UTF16to8(zetcore::string::ForDisplay(program.FullPath()));
}

LaunchFailure WhyNoPort(const filesupport::File& program, const std::optional<ScannerProcessEnd>& end)
{
    if (!end)
        return {reasons::InEnglish(reasons::scannerIsSilent,
                                   {std::to_string(portTimeout.count()), PathText(program)})};
    return {end->Tell({reasons::scannerExited, reasons::scannerWasEnded, reasons::scannerEnded},
                      PathText(program))};
}

/// Its destructor gives up the block's handle, and with it the launch lock, however the launch ends.
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

std::variant<std::uint16_t, LaunchFailure> ScannerLauncher::Launch(ScannerProcess& process)
{
    zetcore::threads::AssertMainThread();
    const bool mapped =
        block.Init(protocol::blockName, protocol::blockSize, filesupport::MemoryMappedFile::CreateLocked);
    blockAddress = mapped ? block.GetAddress() : nullptr;
    if (!blockAddress)
        return LaunchFailure{reasons::InEnglish(reasons::noSharedMemory, {protocol::blockName})};
    const LaunchLock launchLock(block);
    const filesupport::File program = FindScannerProgram();
    if (auto failure = Start(program, process))
        return *std::move(failure);
    return WaitForPort(program, process);
}

std::optional<LaunchFailure> ScannerLauncher::Start(const filesupport::File& program, ScannerProcess& process)
{
    const int volume = zetcore::debug::GetMasterTraceVolume();
    static ScanTraceSite volumeSite;
    volumeSite.Write("Writing trace volume, volume: ", volume);
    BlockWords words(blockAddress);
    PrepareForLaunch(words, volume);

    if (!program.Exists())
        return LaunchFailure{reasons::InEnglish(reasons::noScanner, {PathText(program)})};
    static ScanTraceSite launchSite;
    launchSite.Write("Launching scan server");
    FaultPoint("host.launching");
    try {
        // A handle that an earlier launch has left is overwritten and not closed.
        process = StartScannerProcess(program);
    } catch (const filesupport::file_exception& error) {
        return LaunchFailure{error.what()};
    }
    FaultPoint("host.launched");
    return std::nullopt;
}

std::variant<std::uint16_t, LaunchFailure> ScannerLauncher::WaitForPort(const filesupport::File& program,
                                                                        ScannerProcess process)
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
    // A port that came in the last pass is still good. Only a missing one fails.
    if (const auto port = static_cast<std::uint16_t>(word & portMask))
        return port;
    return WhyNoPort(program, processEnd);
}

} // namespace zetaudiopluginhostui
