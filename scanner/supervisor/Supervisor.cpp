#include "Supervisor.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <optional>

#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/CommonDirs.h>
#include <zetcore/filesupport/Dir.h>
#include <zetcore/filesupport/MemoryMappedFile.h>
#include <zetmarshal/RPCServer.h>
#include <zetscanprotocol/ScanProtocol.h>

#include "Connection.h"
#include "EntityScanner.h"
#include "ExitCodes.h"
#include "Interrupt.h"
#include "ScanConversation.h"
#include "ScanEnd.h"
#include "SupervisorProcess.h"
#include "TimeLimit.h"

namespace zetaudiofilterscan {

using zetcore::filesupport::MemoryMappedFile;

namespace {

constexpr char connectTimeoutKey[] = "zetaudiofilterscan.ConnectTimeoutSeconds";
constexpr std::chrono::seconds defaultConnectTimeout{90};

std::uint32_t* MapPortBlock(MemoryMappedFile& block)
{
    if (!block.Init(zetscanprotocol::blockName, zetscanprotocol::blockSize, MemoryMappedFile::OpenShared))
        return nullptr;
    return static_cast<std::uint32_t*>(block.GetAddress());
}

class Supervisor
{
  public:
    Supervisor()
        : connection(interrupt), entities(interrupt, [this] { return connection.IsClosed(); }),
          conversation(entities)
    {}

    [[noreturn]] void Run(std::uint32_t* block)
    {
        std::atomic_ref<std::uint32_t>(block[zetscanprotocol::portWord]).store(connection.Listen());
        // It starts while the host connects.
        entities.StartAhead();
        const auto limit = TimeLimitFromDebugDatabase(connectTimeoutKey, defaultConnectTimeout);
        const auto deadline = std::chrono::steady_clock::now() + limit;
        for (;;) {
            interrupt.Reset();
            if (connection.IsClosed())
                End(exitConnectionClosed);
            if (const std::optional<Request> request = connection.NextRequest())
                Answer(*request);
            else if (connection.IsTaken())
                interrupt.WaitUntil(std::chrono::steady_clock::time_point::max());
            else if (!interrupt.WaitUntil(deadline))
                End(exitNobodyConnected);
        }
    }

  private:
    void Answer(const Request& request)
    {
        try {
            request.responder->Succeed(conversation.Handle(request.method, request.params));
        } catch (const ConnectionClosed&) {
            End(exitConnectionClosed);
        } catch (const PluginFailed& failure) {
            // The request stays unanswered: to the host, the scanner has died on this plug-in.
            entities.KillWorkers();
            conversation.RecordFailure(failure);
            End(exitPluginFailed);
        } catch (const zetmarshal::RPCError& error) {
            request.responder->Fail(error.Code(), error.what());
        } catch (const std::exception& error) {
            request.responder->Fail(zetmarshal::RPCErrorCode::InternalError, error.what());
        }
    }

    [[noreturn]] void End(int exitCode)
    {
        entities.KillWorkers();
        EndSupervisorProcess(exitCode);
    }

    Interrupt interrupt;
    Connection connection;
    EntityScanner entities;
    ScanConversation conversation;
};

} // namespace

void RunSupervisor()
{
    SetUpSupervisorProcess();
    // Until the host says where its preferences are, the debug database comes from the environment alone.
    MemoryMappedFile mapping;
    std::uint32_t* block = nullptr;
    try {
        zetcore::filesupport::Dir::SetPrefDir(zetcore::filesupport::commondirs::RuntimeDir().FullPath());
        block = MapPortBlock(mapping);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zetaudiofilterscan: %s\n", error.what());
    }
    if (!block) {
        std::fputs("zetaudiofilterscan: there is no host to scan for; hosts start this program themselves\n",
                   stderr);
        EndSupervisorProcess(exitNoPortBlock);
    }
    mapping.CloseFileHandleIfPossible();
    zetcore::debug::SetMasterTraceVolume(static_cast<std::int32_t>(
        std::atomic_ref<std::uint32_t>(block[zetscanprotocol::traceVolumeWord]).load()));
    try {
        Supervisor().Run(block);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zetaudiofilterscan: %s\n", error.what());
        EndSupervisorProcess(exitCannotListen);
    }
}

} // namespace zetaudiofilterscan
