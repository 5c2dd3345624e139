#include "scan/SocketConnection.h"

#include <utility>

#include <zetcore/debug/faults/FaultPoint.h>
#include <zetscanprotocol/ScanProtocol.h>

namespace zetaudiopluginhostui {

using zettransport::SocketTransport;

namespace {

constexpr wchar_t clientName[] = L"ClientUnknown";
constexpr int transportThreads = 1;

} // namespace

template<typename T>
void SocketConnection::Replace(std::shared_ptr<T>& stored, std::shared_ptr<T> with)
{
    const std::lock_guard lock(mutex);
    stored.swap(with);
}

bool SocketConnection::Open(std::uint16_t port)
{
    const auto newTransport = SocketTransport::Create(transportThreads);
    Replace(transport, newTransport);
    const auto newSession = newTransport->ClientStart(zetscanprotocol::loopbackAddress, port);
    Replace(session, newSession);
    if (!newSession)
        return false;
    zetcore::debug::FaultPoint("host.connected");
    Replace(client, std::make_shared<zetmarshal::RPCClient>(newSession, clientName));
    return true;
}

void SocketConnection::SetCloseCallback(zettransport::Session::CloseCallback callback)
{
    session->SetCloseCallback(std::move(callback));
}

void SocketConnection::Send(const zetcore::serialization::Call& call,
                            zetmarshal::RPCClient::ResultHandler onResult,
                            zetmarshal::RPCClient::ErrorHandler onError)
{
    std::shared_ptr<zetmarshal::RPCClient> current;
    {
        const std::lock_guard lock(mutex);
        current = client;
    }
    if (current)
        current->SendRequest(call, std::move(onResult), std::move(onError));
}

void SocketConnection::Close()
{
    if (!session)
        return;
    session->Close();
    Replace(client, {});
    Replace(session, {});
    Replace(transport, {});
}

} // namespace zetaudiopluginhostui
