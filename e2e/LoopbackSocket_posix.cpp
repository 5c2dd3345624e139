#include "LoopbackSocket.h"

#include <array>
#include <utility>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

sockaddr_in Loopback(std::uint16_t port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return address;
}

} // namespace

LoopbackSocket::~LoopbackSocket()
{
    if (descriptor >= 0)
        ::close(descriptor);
}

LoopbackSocket::LoopbackSocket(LoopbackSocket&& other) noexcept
    : descriptor(std::exchange(other.descriptor, -1))
{}

LoopbackSocket LoopbackSocket::Listening()
{
    LoopbackSocket socket;
    socket.descriptor = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = Loopback(0);
    ::bind(socket.descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    ::listen(socket.descriptor, 16);
    return socket;
}

LoopbackSocket LoopbackSocket::ConnectedTo(std::uint16_t port)
{
    LoopbackSocket socket;
    const int opened = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = Loopback(port);
    if (::connect(opened, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        socket.descriptor = opened;
    else
        ::close(opened);
    return socket;
}

std::uint16_t LoopbackSocket::Port() const
{
    sockaddr_in address{};
    socklen_t size = sizeof address;
    ::getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

void LoopbackSocket::Send(const std::string& text) const
{
    // The test does not care whether the other side takes all of it.
    static_cast<void>(::send(descriptor, text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT));
}

std::string LoopbackSocket::ReadToEnd() const
{
    constexpr int longest = 60'000;
    std::string all;
    std::array<char, 4096> buffer;
    for (;;) {
        pollfd waiting{descriptor, POLLIN, 0};
        if (::poll(&waiting, 1, longest) <= 0)
            return all + "(not closed)";
        const ssize_t count = ::recv(descriptor, buffer.data(), buffer.size(), 0);
        if (count <= 0)
            return all;
        all.append(buffer.data(), static_cast<std::size_t>(count));
    }
}
