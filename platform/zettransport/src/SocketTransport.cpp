#include <zettransport/SocketTransport.h>

#include <algorithm>
#include <chrono>
#include <exception>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include <boost/asio/ip/address.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <zetcore/debug/Trace.h>

#include "IoThreads.h"
#include "SocketListener.h"
#include "SocketStream.h"
#include "SocketSystem.h"
#include "TraceCategory.h"

namespace zettransport {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

namespace {

constexpr std::chrono::milliseconds connectLimit{10000};

std::vector<tcp::endpoint> Resolve(const std::string& host, std::uint16_t port)
{
    error_code error;
    if (const auto address = asio::ip::make_address(host, error); !error)
        return {tcp::endpoint(address, port)};
    asio::io_context context;
    tcp::resolver resolver(context);
    std::vector<tcp::endpoint> endpoints;
    for (const auto& entry : resolver.resolve(host, std::to_string(port)))
        endpoints.push_back(entry.endpoint());
    return endpoints;
}

/// Throws `std::system_error`.
tcp::socket ConnectTo(asio::io_context& context, const tcp::endpoint& endpoint,
                      std::chrono::milliseconds limit)
{
    const sockets::NativeSocket native = sockets::Open(endpoint.protocol());
    tcp::socket socket(context);
    error_code error;
    socket.assign(endpoint.protocol(), native, error);
    if (error) {
        sockets::Close(native);
        throw std::system_error(std::error_code(error));
    }
    if (const std::error_code failure = sockets::Connect(native, endpoint, limit))
        throw std::system_error(failure);
    // When nobody listens at the port, the system may give that same port to the connecting socket, which
    // then connects to itself.
    if (socket.local_endpoint(error) == endpoint)
        throw std::system_error(std::make_error_code(std::errc::connection_refused));
    return socket;
}

} // namespace

struct SocketTransport::State
{
    explicit State(int threads) : io(IoThreads::Create(threads)) {}

    /// Null when the transport is closing.
    std::shared_ptr<Session> MakeSession(tcp::socket socket)
    {
        const auto session = Session::Create(std::make_shared<SocketStream>(io, std::move(socket)));
        const std::lock_guard lock(mutex);
        if (closing)
            return nullptr;
        std::erase_if(sessions, [](const auto& weak) { return weak.expired(); });
        sessions.push_back(session);
        return session;
    }

    void OnConnection(const AcceptHandler& handler, tcp::socket socket)
    {
        error_code error;
        const tcp::endpoint remote = socket.remote_endpoint(error);
        const tcp::endpoint local = error ? tcp::endpoint() : socket.local_endpoint(error);
        if (error)
            return;
        const Peer peer{remote.address().to_string(), remote.port(),
                        sockets::BelongsToSameUser(local, remote), local.port()};
        const auto session = MakeSession(std::move(socket));
        if (!session)
            return;
        try {
            if (handler(session, peer))
                return;
        } catch (const std::exception& failure) {
            zetcore::debug::TraceLine(1, traceCategory,
                                      std::string("The accept handler threw: ") + failure.what());
        }
        session->Close();
    }

    const std::shared_ptr<IoThreads> io;
    std::mutex mutex;
    bool closing = false;
    std::vector<std::weak_ptr<Session>> sessions;
    std::shared_ptr<SocketListener> listener;
};

std::shared_ptr<SocketTransport> SocketTransport::Create(int threads)
{
    return std::shared_ptr<SocketTransport>(new SocketTransport(threads));
}

SocketTransport::SocketTransport(int threads) : state(std::make_shared<State>(threads)) {}

SocketTransport::~SocketTransport()
{
    state->io->SetStopping();
    std::vector<std::weak_ptr<Session>> sessions;
    {
        const std::lock_guard lock(state->mutex);
        state->closing = true;
        sessions.swap(state->sessions);
    }
    ServerStop();
    for (const auto& weak : sessions)
        if (const auto session = weak.lock())
            session->Close();
    state->io->Stop();
}

std::shared_ptr<Session> SocketTransport::ClientStart(const std::string& host, std::uint16_t port)
{
    std::string problem = "no address";
    try {
        const auto deadline = std::chrono::steady_clock::now() + connectLimit;
        for (const tcp::endpoint& endpoint : Resolve(host, port)) {
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(std::max(
                deadline - std::chrono::steady_clock::now(), std::chrono::steady_clock::duration(0)));
            try {
                return state->MakeSession(ConnectTo(state->io->Context(), endpoint, left));
            } catch (const std::system_error& error) {
                problem = error.what();
            }
        }
    } catch (const std::exception& error) {
        problem = error.what();
    }
    zetcore::debug::TraceLine(1, traceCategory,
                              "Cannot connect to " + host + " port " + std::to_string(port) + ": " + problem);
    return nullptr;
}

std::uint16_t SocketTransport::ServerStart(AcceptHandler handler)
{
    ServerStop();
    auto listener = SocketListener::Open(
        state->io, [weak = std::weak_ptr(state), handler = std::move(handler)](tcp::socket socket) {
            if (const auto current = weak.lock())
                current->OnConnection(handler, std::move(socket));
        });
    const std::lock_guard lock(state->mutex);
    state->listener = std::move(listener);
    return state->listener->Port();
}

void SocketTransport::ServerStop()
{
    std::shared_ptr<SocketListener> stopped;
    {
        const std::lock_guard lock(state->mutex);
        stopped.swap(state->listener);
    }
    if (stopped)
        stopped->Close();
}

} // namespace zettransport
