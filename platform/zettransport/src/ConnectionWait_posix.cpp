#include "ConnectionWait.h"

#include <utility>

namespace zettransport {

/// The acceptor itself can be waited for, so nothing is needed here.
struct ConnectionWait::Signal
{};

ConnectionWait::ConnectionWait(boost::asio::io_context&, boost::asio::ip::tcp::acceptor& listening)
    : acceptor(listening)
{}

ConnectionWait::~ConnectionWait() = default;

void ConnectionWait::Open(boost::system::error_code& error)
{
    error.clear();
}

void ConnectionWait::Start(ReadyHandler ready)
{
    acceptor.async_wait(boost::asio::socket_base::wait_read, std::move(ready));
}

void ConnectionWait::Close()
{
    boost::system::error_code ignored;
    acceptor.close(ignored);
}

} // namespace zettransport
