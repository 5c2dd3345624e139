#include "RunSupervisor.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <optional>

#include <zetcore/debug/TimeEntry.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/filesupport/sharing/MemoryMappedFile.h>
#include <zetmarshal/RPCServer.h>
#include <zetscanprotocol/ScanProtocol.h>

#include "ExitCodes.h"
#include "supervisor/conversation/Connection.h"
#include "supervisor/conversation/PluginFiles.h"
#include "supervisor/conversation/ScanConversation.h"
#include "supervisor/lookahead/AheadScanner.h"
#include "supervisor/lookahead/CulpritMemory.h"
#include "supervisor/process/HostProcess.h"
#include "supervisor/process/Interrupt.h"
#include "supervisor/process/ProcessIdentity.h"
#include "supervisor/process/SupervisorProcess.h"
#include "supervisor/verdicts/PluginFailed.h"

namespace zetaudiofilterscan {

using zetcore::debug::FaultPoint;
using zetcore::filesupport::MemoryMappedFile;

namespace {

constexpr char connectTimeoutKey[] = "zetaudiofilterscan.ConnectTimeoutSeconds";
constexpr std::chrono::seconds defaultConnectTimeout{90};
// The pause between two looks for the host, while there is no connection.
constexpr std::chrono::seconds lookForHost{1};

std::uint32_t* MapPortBlock(MemoryMappedFile& block)
{
    if (!block.Init(zetscanprotocol::blockName, zetscanprotocol::blockSize, MemoryMappedFile::OpenShared))
        return nullptr;
    return static_cast<std::uint32_t*>(block.GetAddress());
}

class Supervisor
{
  public:
    explicit Supervisor(std::uint64_t host)
        : hostProcess(host), connection(interrupt, host), conversation(scanner, host)
    {}

    [[noreturn]] void Run(std::uint32_t* block)
    {
        const std::uint16_t port = connection.Listen();
        FaultPoint("supervisor.listening");
        std::atomic_ref<std::uint32_t>(block[zetscanprotocol::portWord]).store(port);
        FaultPoint("supervisor.port-told");
        // A worker starts while the host connects, unless this scanner is there for what the last one has
        // found out.
        if (!CulpritMemory::IsThereFor(IdentifyHost(hostProcess)))
            scanner.StartAhead();
        const auto limit = zetcore::debug::TimeFromDebugDatabase(connectTimeoutKey, defaultConnectTimeout);
        const auto deadline = Clock::now() + limit;
        for (;;) {
            interrupt.Reset();
            if (connection.IsClosed()) {
                FaultPoint("supervisor.closed");
                conversation.Abandon();
                End(exitConnectionClosed);
            }
            scanner.Work();
            if (AnswersRequest())
                continue;
            if (NobodyComes(deadline))
                End(exitNobodyConnected);
            scanner.Wait(interrupt, NextLook(deadline));
        }
    }

  private:
    using Clock = std::chrono::steady_clock;

    bool NobodyComes(Clock::time_point deadline) const
    {
        const bool isTaken = connection.IsTaken();
        const auto now =
            Clock::now() + zetcore::debug::FaultDelay(isTaken ? "supervisor.serving" : "supervisor.waiting");
        return !isTaken && (now >= deadline || HostProcessHasEnded(hostProcess));
    }
    Clock::time_point NextLook(Clock::time_point deadline) const
    {
        return connection.IsTaken() ? Clock::time_point::max()
                                    : std::min(deadline, Clock::now() + lookForHost);
    }

    /// False when there is nothing to answer, or nothing to answer it with yet.
    bool AnswersRequest()
    {
        const bool isNew = !request;
        if (isNew)
            request = connection.NextRequest();
        if (!request)
            return false;
        try {
            if (isNew)
                conversation.Take(request->method, request->params);
            const auto value = conversation.Reply();
            if (!value)
                return false;
            FaultPoint("supervisor.answering");
            request->responder->Succeed(*value);
            FaultPoint("supervisor.answered");
        } catch (const PluginFailed& failure) {
            // The request stays unanswered: to the host, the scanner has died on this plug-in.
            scanner.KillWorkers();
            FaultPoint("supervisor.failed");
            conversation.RecordFailure(failure);
            FaultPoint("supervisor.failure-told");
            End(exitPluginFailed);
        } catch (const zetmarshal::RPCError& error) {
            request->responder->Fail(error.Code(), error.what());
        } catch (const std::exception& error) {
            request->responder->Fail(zetmarshal::RPCErrorCode::InternalError, error.what());
        }
        request.reset();
        return true;
    }

    [[noreturn]] void End(int exitCode)
    {
        // The host may kill this process at any moment. While there are workers, their guards would then
        // remove the files; what a worker makes meanwhile is removed after it.
        RemovePluginFiles();
        scanner.KillWorkers();
        RemovePluginFiles();
        EndSupervisorProcess(exitCode);
    }

    const std::uint64_t hostProcess;
    Interrupt interrupt;
    Connection connection;
    AheadScanner scanner;
    ScanConversation conversation;
    /// Taken up and not answered yet.
    std::optional<Request> request;
};

} // namespace

void RunSupervisor()
{
    const std::uint64_t host = HostProcessNumber();
    SetUpSupervisorProcess();
    FaultPoint("supervisor.started");
    // The debug database comes from the environment alone until the host says where its preferences are.
    MemoryMappedFile mapping;
    std::uint32_t* block = nullptr;
    try {
        zetcore::filesupport::Dir::SetPrefDir(zetcore::filesupport::commondirs::RuntimeDir().FullPath());
        block = MapPortBlock(mapping);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zetaudiofilterscan: %s\n", error.what());
    }
    if (!block || !HostProcessIsWaiting(host)) {
        std::fputs("zetaudiofilterscan: there is no host to scan for; hosts start this program themselves\n",
                   stderr);
        EndSupervisorProcess(exitNoPortBlock);
    }
    mapping.CloseFileHandleIfPossible();
    zetcore::debug::SetMasterTraceVolume(static_cast<std::int32_t>(
        std::atomic_ref<std::uint32_t>(block[zetscanprotocol::traceVolumeWord]).load()));
    GiveUpPrivileges();
    try {
        Supervisor(host).Run(block);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zetaudiofilterscan: %s\n", error.what());
        EndSupervisorProcess(exitCannotListen);
    }
}

} // namespace zetaudiofilterscan
