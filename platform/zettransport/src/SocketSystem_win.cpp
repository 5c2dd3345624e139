#include "SocketSystem.h"

#include <algorithm>

#include <winsock2.h>

#include <windows.h>

namespace zettransport::sockets {

namespace {

std::error_code LastSocketError()
{
    return {::WSAGetLastError(), std::system_category()};
}

/// Waits for the end of a connect that is under way, and returns its error.
std::error_code AwaitConnected(NativeSocket socket, std::chrono::milliseconds limit)
{
    fd_set connected;
    fd_set failed;
    FD_ZERO(&connected);
    FD_ZERO(&failed);
    FD_SET(socket, &connected);
    FD_SET(socket, &failed);
    timeval wait{};
    wait.tv_sec = static_cast<long>(limit.count() / 1000);
    wait.tv_usec = static_cast<long>(limit.count() % 1000 * 1000);
    const int ready = ::select(0, nullptr, &connected, &failed, &wait);
    if (ready == SOCKET_ERROR)
        return LastSocketError();
    if (ready == 0)
        return {WSAETIMEDOUT, std::system_category()};
    int result = 0;
    int size = sizeof result;
    if (::getsockopt(socket, SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&result), &size) != 0)
        return LastSocketError();
    return result == 0 ? std::error_code() : std::error_code(result, std::system_category());
}

} // namespace

NativeSocket Open(const boost::asio::ip::tcp& protocol)
{
    const SOCKET socket = ::WSASocketW(protocol.family(), SOCK_STREAM, protocol.protocol(), nullptr, 0,
                                       WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT);
    if (socket == INVALID_SOCKET)
        throw std::system_error(LastSocketError(), "cannot open a socket");
    u_long nonBlocking = 1;
    ::ioctlsocket(socket, static_cast<long>(FIONBIO), &nonBlocking);
    return socket;
}

NativeSocket OpenForListening(const boost::asio::ip::tcp& protocol)
{
    const SOCKET socket = Open(protocol);
    const BOOL exclusive = TRUE;
    if (::setsockopt(socket, SOL_SOCKET, SO_EXCLUSIVEADDRUSE, reinterpret_cast<const char*>(&exclusive),
                     sizeof exclusive) != 0) {
        const std::error_code error = LastSocketError();
        ::closesocket(socket);
        throw std::system_error(error, "cannot reserve the listening address");
    }
    return socket;
}

std::error_code Connect(NativeSocket socket, const Endpoint& endpoint, std::chrono::milliseconds limit)
{
    if (::connect(socket, endpoint.data(), static_cast<int>(endpoint.size())) == 0)
        return {};
    if (::WSAGetLastError() != WSAEWOULDBLOCK)
        return LastSocketError();
    return AwaitConnected(socket, limit);
}

NativeSocket Accept(NativeSocket listener, std::error_code& error)
{
    const SOCKET socket = ::accept(listener, nullptr, nullptr);
    if (socket == INVALID_SOCKET) {
        error = ::WSAGetLastError() == WSAEWOULDBLOCK ? std::make_error_code(std::errc::operation_would_block)
                                                      : LastSocketError();
        return socket;
    }
    error.clear();
    // The new socket has the listener's event, which is taken away from it.
    ::WSAEventSelect(socket, nullptr, 0);
    ::SetHandleInformation(reinterpret_cast<HANDLE>(socket), HANDLE_FLAG_INHERIT, 0);
    return socket;
}

void EndBothWays(boost::asio::ip::tcp::socket& socket)
{
    boost::system::error_code ignored;
    socket.shutdown(boost::asio::ip::tcp::socket::shutdown_both, ignored);
    // A read that is under way has got all that has come, and would go on waiting.
    socket.cancel(ignored);
}

void Close(NativeSocket socket)
{
    ::closesocket(socket);
}

} // namespace zettransport::sockets
