#include "SocketListener.h"

#include <chrono>
#include <optional>
#include <string>
#include <utility>

#include <boost/asio/ip/address_v4.hpp>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/handles/SystemError.h>

#include "SocketSystem.h"

namespace zettransport {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

std::shared_ptr<SocketListener> SocketListener::Open(std::shared_ptr<IoThreads> io, ConnectionHandler handler)
{
    std::shared_ptr<SocketListener> listener(new SocketListener(std::move(io), std::move(handler)));
    listener->Listen();
    listener->WaitNext();
    return listener;
}

SocketListener::SocketListener(std::shared_ptr<IoThreads> ioThreads, ConnectionHandler connectionHandler)
    : io(std::move(ioThreads)), acceptor(io->Context()), connections(io->Context(), acceptor),
      pause(io->Context()), handler(std::make_shared<const ConnectionHandler>(std::move(connectionHandler)))
{}

void SocketListener::Listen()
{
    const auto check = [](const error_code& error) {
        if (error)
            throw std::system_error(std::error_code(error), "cannot listen on 127.0.0.1");
    };
    const sockets::NativeSocket native = sockets::OpenForListening(tcp::v4());
    error_code error;
    acceptor.assign(tcp::v4(), native, error);
    if (error)
        sockets::Close(native);
    check(error);
    acceptor.non_blocking(true, error);
    check(error);
    acceptor.bind(tcp::endpoint(asio::ip::address_v4::loopback(), 0), error);
    check(error);
    acceptor.listen(asio::socket_base::max_listen_connections, error);
    check(error);
    const tcp::endpoint bound = acceptor.local_endpoint(error);
    check(error);
    connections.Open(error);
    check(error);
    port = bound.port();
}

void SocketListener::Close()
{
    std::shared_ptr<const ConnectionHandler> dropped;
    const std::lock_guard lock(mutex);
    dropped.swap(handler);
    connections.Close();
    pause.cancel();
}

void SocketListener::WaitNext()
{
    const std::lock_guard lock(mutex);
    if (!handler)
        return;
    connections.Start([self = shared_from_this()](const error_code& error) {
        if (error)
            return;
        self->OnReady();
    });
}

void SocketListener::OnReady()
{
    // A program that floods the port must not keep the thread from the connections that there are.
    constexpr int mostInOneTurn = 8;
    for (int turn = 0; turn < mostInOneTurn && !io->Stopping(); ++turn) {
        std::error_code error;
        std::optional<sockets::NativeSocket> native;
        std::shared_ptr<const ConnectionHandler> current;
        {
            const std::lock_guard lock(mutex);
            current = handler;
            if (!current)
                return;
            native = sockets::Accept(acceptor.native_handle(), error);
        }
        if (error == std::errc::operation_would_block || error == std::errc::resource_unavailable_try_again)
            break;
        if (error == std::errc::connection_aborted || error == std::errc::interrupted)
            continue;
        if (error) {
            zetcore::debug::TraceLine(1, "zettransport",
                                      "Cannot accept a connection: " +
                                          zetcore::filesupport::DescribeError(error));
            Pause();
            return;
        }
        tcp::socket socket(io->Context());
        error_code assignError;
        socket.assign(tcp::v4(), *native, assignError);
        if (assignError)
            sockets::Close(*native);
        else
            (*current)(std::move(socket));
    }
    WaitNext();
}

/// Waits for a moment after a connection could not be accepted, for example because there are no descriptors
/// left. The connection is still there, so a new wait would end at once, again and again.
void SocketListener::Pause()
{
    const std::lock_guard lock(mutex);
    if (!handler)
        return;
    pause.expires_after(std::chrono::milliseconds(100));
    pause.async_wait([self = shared_from_this()](const error_code& error) {
        if (!error)
            self->OnReady();
    });
}

} // namespace zettransport
