#include "ConnectionWait.h"

#include <utility>

#include <boost/asio/windows/object_handle.hpp>

#include <zetcore/filesupport/handles/Handle.h>

namespace zettransport {

using boost::system::error_code;

/// An event that the system sets when a connection has come.
struct ConnectionWait::Signal
{
    explicit Signal(boost::asio::io_context& context) : event(context) {}

    boost::asio::windows::object_handle event;
};

ConnectionWait::ConnectionWait(boost::asio::io_context& context, boost::asio::ip::tcp::acceptor& listening)
    : acceptor(listening), signal(std::make_unique<Signal>(context))
{}

ConnectionWait::~ConnectionWait() = default;

void ConnectionWait::Open(error_code& error)
{
    // It resets itself when the wait for it ends.
    zetcore::filesupport::Handle event(::CreateEventW(nullptr, FALSE, FALSE, nullptr));
    if (!event.IsOpen()) {
        error = error_code(static_cast<int>(::GetLastError()), boost::system::system_category());
        return;
    }
    signal->event.assign(event.Get(), error);
    if (error)
        return;
    if (::WSAEventSelect(acceptor.native_handle(), event.Release(), FD_ACCEPT) != 0)
        error = error_code(::WSAGetLastError(), boost::system::system_category());
}

void ConnectionWait::Start(ReadyHandler ready)
{
    signal->event.async_wait(std::move(ready));
}

void ConnectionWait::Close()
{
    error_code ignored;
    acceptor.close(ignored);
    signal->event.close(ignored);
}

} // namespace zettransport
