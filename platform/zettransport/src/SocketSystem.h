#pragma once

#include <chrono>
#include <system_error>

#include <boost/asio/ip/tcp.hpp>

/// The few socket calls that Asio does not make as we need them. Child processes must not inherit sockets,
/// not even for a moment.
namespace zettransport::sockets {

using Endpoint = boost::asio::ip::tcp::endpoint;
using NativeSocket = boost::asio::ip::tcp::socket::native_handle_type;

/// Opens a TCP socket of the protocol's family that child processes do not inherit. Throws
/// `std::system_error`.
NativeSocket Open(const boost::asio::ip::tcp& protocol);
/// Opens a socket for listening. No other program can bind the same address as well.
NativeSocket OpenForListening(const boost::asio::ip::tcp& protocol);
/// Connects, and waits for at most the time given. Returns no error when connected. The socket does not block
/// afterwards.
std::error_code Connect(NativeSocket socket, const Endpoint& endpoint, std::chrono::milliseconds limit);
/// Returns the next waiting connection, or sets `std::errc::operation_would_block` when there is none. Child
/// processes do not inherit it.
NativeSocket Accept(NativeSocket listener, std::error_code& error);
void Close(NativeSocket socket);
/// Ends a connection both ways without closing the socket, so that a pending read ends, too. Where the system
/// still has bytes that have arrived, the read gives them first.
void EndBothWays(boost::asio::ip::tcp::socket& socket);

/// True when the process at the other end of a connection within this machine belongs to this process's user.
/// It is also true when that cannot be told.
bool BelongsToSameUser(const Endpoint& local, const Endpoint& remote);

} // namespace zettransport::sockets
