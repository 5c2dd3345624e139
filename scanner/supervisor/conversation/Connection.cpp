#include "supervisor/conversation/Connection.h"

#include <zetcore/debug/Trace.h>
#include <zetcore/debug/faults/FaultPoint.h>
#include <zetscanprotocol/ScanProtocol.h>
#include <zettransport/PeerProcess.h>

#include "TraceCategory.h"

namespace zetaudiofilterscan {

using zetcore::debug::FaultPoint;
using zetmarshal::RPCResponder;
using zetmarshal::RPCServer;
using zettransport::Session;
using zettransport::SocketTransport;

Connection::Connection(Interrupt& wake, std::uint64_t host)
    : interrupt(wake), hostProcess(host), transport(SocketTransport::Create(1))
{}

Connection::~Connection() = default;

std::uint16_t Connection::Listen()
{
    return transport->ServerStart(
        [this](std::shared_ptr<Session> accepted, const SocketTransport::Peer& peer) {
            return Accept(std::move(accepted), peer);
        });
}

bool Connection::IsTaken() const
{
    const std::scoped_lock lock(mutex);
    return session != nullptr;
}

bool Connection::IsClosed() const
{
    const std::scoped_lock lock(mutex);
    return closed;
}

std::optional<Request> Connection::NextRequest()
{
    const std::scoped_lock lock(mutex);
    if (requests.empty())
        return std::nullopt;
    std::optional<Request> request = std::move(requests.front());
    requests.pop_front();
    return request;
}

bool Connection::Accept(std::shared_ptr<Session> accepted, const SocketTransport::Peer& peer)
{
    const std::string from = peer.address + ":" + std::to_string(peer.port);
    if (!peer.sameUser) {
        zetcore::debug::TraceLine(1, traceCategory, "refused " + from + ": another user's process");
        return false;
    }
    // Strangers may keep coming, so each of them costs as little as possible.
    if (IsTaken() || !zettransport::MayBeProcess(peer, hostProcess)) {
        zetcore::debug::TraceLine(1, traceCategory, "refused " + from + ": not the host that started this");
        return false;
    }
    RPCServer* started = nullptr;
    {
        const std::scoped_lock lock(mutex);
        session = accepted;
        server = std::make_unique<RPCServer>(std::move(accepted));
        started = server.get();
    }
    for (const char* name : zetscanprotocol::methods)
        started->Register(name,
                          [this, method = std::string(name)](const zetcore::serialization::Array& params,
                                                             std::shared_ptr<RPCResponder> responder) {
                              const std::scoped_lock lock(mutex);
                              requests.push_back({method, params, std::move(responder)});
                              interrupt.Set();
                          });
    session->SetCloseCallback([this](const std::shared_ptr<Session>&) -> zettransport::TransportError {
        const std::scoped_lock lock(mutex);
        closed = true;
        interrupt.Set();
        return 0;
    });
    FaultPoint("supervisor.accepted");
    started->Start();
    interrupt.Set();
    return true;
}

} // namespace zetaudiofilterscan
