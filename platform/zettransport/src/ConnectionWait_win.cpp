#include "ConnectionWait.h"

#include <utility>

#include <boost/asio/windows/object_handle.hpp>

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
    const HANDLE event = ::CreateEventW(nullptr, FALSE, FALSE, nullptr);
    if (!event) {
        error = error_code(static_cast<int>(::GetLastError()), boost::system::system_category());
        return;
    }
    signal->event.assign(event, error);
    if (error) {
        ::CloseHandle(event);
        return;
    }
    if (::WSAEventSelect(acceptor.native_handle(), event, FD_ACCEPT) != 0)
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
