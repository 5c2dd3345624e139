#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>

#include "ConnectionWait.h"
#include "IoThreads.h"

namespace zettransport {

/// Accepts connections on 127.0.0.1 at a port that the system chooses, until it is closed. A pending wait
/// owns it.
class SocketListener : public std::enable_shared_from_this<SocketListener>
{
  public:
    /// Called once at a time, on the transport's threads.
    using ConnectionHandler = std::function<void(boost::asio::ip::tcp::socket)>;

    /// Throws `std::system_error`.
    static std::shared_ptr<SocketListener> Open(std::shared_ptr<IoThreads> io, ConnectionHandler handler);

    std::uint16_t Port() const noexcept { return port; }
    /// Any thread.
    void Close();

  private:
    SocketListener(std::shared_ptr<IoThreads> io, ConnectionHandler handler);
    void Listen();
    void WaitNext();
    void OnReady();
    void Pause();

    const std::shared_ptr<IoThreads> io;
    std::uint16_t port = 0;

    std::mutex mutex;
    boost::asio::ip::tcp::acceptor acceptor;
    ConnectionWait connections;
    boost::asio::steady_timer pause;
    /// Null when the listener is closed.
    std::shared_ptr<const ConnectionHandler> handler;
};

} // namespace zettransport
