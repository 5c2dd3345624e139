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

/// Whether the user may own the other end of a connection, by the text of both tables. When they show our end
/// and not the other's, the other side has gone, and so it is nobody's. When they show neither, they tell
/// nothing.
bool MayOwnOtherEnd(std::uint32_t user, std::string_view tables, const boost::asio::ip::tcp::endpoint& ours,
                    const boost::asio::ip::tcp::endpoint& others);

} // namespace zettransport
