#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include <boost/asio/ip/tcp.hpp>

namespace zettransport {

/// The user that owns the socket with these two ends, by the text of /proc/net/tcp or /proc/net/tcp6; nothing
/// when no line has it, and when the socket belongs to no process any more (such lines name user 0). IPv4
/// addresses are found in their IPv6 form too. Lines that cannot be read are passed over.
std::optional<std::uint32_t> FindSocketOwner(std::string_view table,
                                             const boost::asio::ip::tcp::endpoint& local,
                                             const boost::asio::ip::tcp::endpoint& remote);

} // namespace zettransport
