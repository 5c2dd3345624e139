#pragma once

#include <cstdint>
#include <optional>

#include <boost/asio/ip/tcp.hpp>

namespace zettransport {

/// The user that owns a socket, and the socket's own number, which a process's descriptors show.
struct SocketOwner
{
    std::uint32_t user = 0;
    std::uint32_t inode = 0;
};

/// Asks the kernel for the IPv4 socket with these two ends. That takes microseconds, and reading the whole
/// table may take many milliseconds. Returns nothing when the socket belongs to no process any more, and when
/// the kernel does not answer such questions.
std::optional<SocketOwner> AskSocket(const boost::asio::ip::tcp::endpoint& local,
                                     const boost::asio::ip::tcp::endpoint& remote);

} // namespace zettransport
