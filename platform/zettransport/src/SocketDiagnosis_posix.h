#pragma once

#include <cstdint>
#include <optional>

#include <boost/asio/ip/tcp.hpp>

namespace zettransport {

/// Who owns a socket, and its own number, by which a process's descriptors show it.
struct SocketOwner
{
    std::uint32_t user = 0;
    std::uint32_t inode = 0;
};

/// The IPv4 socket with these two ends, asked of the kernel for this one socket: that takes microseconds
/// where reading the whole table may take many milliseconds. Nothing when the socket belongs to no process
/// any more, and when the kernel does not answer such questions.
std::optional<SocketOwner> AskSocket(const boost::asio::ip::tcp::endpoint& local,
                                     const boost::asio::ip::tcp::endpoint& remote);

} // namespace zettransport
