#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include <boost/asio/ip/tcp.hpp>

namespace zettransport {

/// Finds the user that owns the socket with these two ends, in the text of /proc/net/tcp or /proc/net/tcp6.
/// IPv4 addresses are found in their IPv6 form too, and lines that cannot be read are passed over. Returns
/// nothing when no line has the socket, and when it belongs to no process any more (such a line names user
/// 0).
std::optional<std::uint32_t> FindSocketOwner(std::string_view table,
                                             const boost::asio::ip::tcp::endpoint& local,
                                             const boost::asio::ip::tcp::endpoint& remote);

} // namespace zettransport
