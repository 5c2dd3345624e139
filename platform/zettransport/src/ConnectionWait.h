#pragma once

#include <functional>
#include <memory>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>

namespace zettransport {

/// Waits on the threads of a context until a listening socket has a connection to accept. Asio's own wait for
/// that fails on Windows. One thread at a time.
class ConnectionWait
{
  public:
    using ReadyHandler = std::function<void(const boost::system::error_code&)>;

    /// The acceptor must outlive this object. It need not listen yet.
    ConnectionWait(boost::asio::io_context& context, boost::asio::ip::tcp::acceptor& acceptor);
    ~ConnectionWait();
    ConnectionWait(const ConnectionWait&) = delete;
    ConnectionWait& operator=(const ConnectionWait&) = delete;

    /// Call this once, when the acceptor listens.
    void Open(boost::system::error_code& error);
    /// Calls `ready` when a connection has come, or with an error when it is closed before that. Then all
    /// connections that there are must be accepted. One wait at a time.
    void Start(ReadyHandler ready);
    /// Ends the wait and closes the acceptor.
    void Close();

  private:
    struct Signal;

    boost::asio::ip::tcp::acceptor& acceptor;
    std::unique_ptr<Signal> signal;
};

} // namespace zettransport
