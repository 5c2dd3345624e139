#include "SocketSystem.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace zettransport::sockets {

namespace {

std::error_code SystemError(int code)
{
    return {code, std::system_category()};
}

/// Waits for the end of a connect that is under way, and returns its error.
std::error_code AwaitConnected(NativeSocket socket, std::chrono::milliseconds limit)
{
    const auto deadline = std::chrono::steady_clock::now() + limit;
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(
            std::max(deadline - std::chrono::steady_clock::now(), std::chrono::steady_clock::duration(0)));
        pollfd waiting{socket, POLLOUT, 0};
        const int ready = ::poll(&waiting, 1, static_cast<int>(left.count()));
        if (ready < 0 && errno == EINTR)
            continue;
        if (ready < 0)
            return SystemError(errno);
        if (ready == 0)
            return SystemError(ETIMEDOUT);
        int result = 0;
        socklen_t size = sizeof result;
        if (::getsockopt(socket, SOL_SOCKET, SO_ERROR, &result, &size) != 0)
            return SystemError(errno);
        return result == 0 ? std::error_code() : SystemError(result);
    }
}

} // namespace

NativeSocket Open(const boost::asio::ip::tcp& protocol)
{
    const int socket =
        ::socket(protocol.family(), SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, protocol.protocol());
    if (socket < 0)
        throw std::system_error(SystemError(errno), "cannot open a socket");
    return socket;
}

NativeSocket OpenForListening(const boost::asio::ip::tcp& protocol)
{
    return Open(protocol);
}

std::error_code Connect(NativeSocket socket, const Endpoint& endpoint, std::chrono::milliseconds limit)
{
    if (::connect(socket, endpoint.data(), static_cast<socklen_t>(endpoint.size())) == 0)
        return {};
    // An interrupted connect goes on in the background, as one that would block does.
    if (errno != EINPROGRESS && errno != EINTR)
        return SystemError(errno);
    return AwaitConnected(socket, limit);
}

NativeSocket Accept(NativeSocket listener, std::error_code& error)
{
    const int socket = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    error = socket < 0 ? SystemError(errno) : std::error_code();
    return socket;
}

void EndBothWays(boost::asio::ip::tcp::socket& socket)
{
    boost::system::error_code ignored;
    socket.shutdown(boost::asio::ip::tcp::socket::shutdown_both, ignored);
}

void Close(NativeSocket socket)
{
    ::close(socket);
}

} // namespace zettransport::sockets
