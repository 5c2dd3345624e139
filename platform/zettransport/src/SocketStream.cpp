#include "SocketStream.h"

#include <stdexcept>
#include <utility>

#include <boost/asio/bind_executor.hpp>
#include <boost/asio/buffer.hpp>
#include <boost/asio/error.hpp>
#include <zetcore/debug/DeferredTrace.h>
#include <zetcore/debug/Trace.h>

#include "SocketSystem.h"

namespace zettransport {

namespace asio = boost::asio;
using boost::system::error_code;

SocketStream::SocketStream(std::shared_ptr<IoThreads> ioThreads, asio::ip::tcp::socket connected)
    : io(std::move(ioThreads)), strand(io->Context().get_executor()), socket(std::move(connected))
{
    error_code ignored;
    socket.set_option(asio::ip::tcp::no_delay(true), ignored);
    socket.non_blocking(true, ignored);
}

void SocketStream::Start(BytesHandler bytes, ClosedHandler closedHandler)
{
    {
        const std::lock_guard lock(mutex);
        if (closed)
            return;
        if (handlers)
            throw std::logic_error("the stream has been started already");
        handlers = std::make_shared<const Handlers>(Handlers{std::move(bytes), std::move(closedHandler)});
    }
    ReadNext();
}

void SocketStream::ReadNext()
{
    const std::lock_guard lock(mutex);
    if (closed)
        return;
    socket.async_read_some(
        asio::buffer(readBuffer),
        asio::bind_executor(strand, [self = shared_from_this()](const error_code& error, std::size_t size) {
            self->OnRead(error, size);
        }));
}

void SocketStream::OnRead(const error_code& error, std::size_t size)
{
    if (io->Stopping())
        return;
    if (error) {
        if (const auto taken = TakeHandlers()) {
            CloseSocket();
            taken->closed(error == asio::error::eof ? std::error_code() : std::error_code(error));
        }
        return;
    }
    std::shared_ptr<const Handlers> current;
    {
        const std::lock_guard lock(mutex);
        current = handlers;
    }
    if (!current)
        return;
    current->bytes(std::string_view(readBuffer.data(), size));
    ReadNext();
}

void SocketStream::Write(std::string bytes)
{
    const zetcore::debug::DeferredTrace afterTheLock;
    const std::lock_guard lock(mutex);
    if (closed || writesBroken || bytes.empty())
        return;
    std::size_t written = 0;
    if (queue.empty()) {
        error_code error;
        written = socket.write_some(asio::buffer(bytes), error);
        if (error && error != asio::error::would_block) {
            BreakWrites();
            return;
        }
        if (written == bytes.size())
            return;
    }
    queuedBytes += bytes.size() - written;
    if (queuedBytes > maxQueuedBytes) {
        zetcore::debug::TraceLine(1, "zettransport", "The other side does not read: connection given up");
        BreakWrites();
        return;
    }
    queue.push_back(std::move(bytes));
    if (queue.size() == 1) {
        writtenOfFirst = written;
        WriteQueued();
    }
}

void SocketStream::WriteQueued()
{
    socket.async_write_some(
        asio::buffer(queue.front()) + writtenOfFirst,
        asio::bind_executor(strand, [self = shared_from_this()](const error_code& error, std::size_t size) {
            self->OnWritten(error, size);
        }));
}

void SocketStream::OnWritten(const error_code& error, std::size_t size)
{
    const std::lock_guard lock(mutex);
    if (closed || writesBroken)
        return;
    if (error) {
        BreakWrites();
        return;
    }
    queuedBytes -= size;
    writtenOfFirst += size;
    if (writtenOfFirst == queue.front().size()) {
        queue.pop_front();
        writtenOfFirst = 0;
    }
    if (!queue.empty())
        WriteQueued();
}

/// Stops writing. Bytes that have arrived already are still read, because the last reply of a process that
/// died may be among them. The read that finds the end after them closes the stream.
void SocketStream::BreakWrites()
{
    writesBroken = true;
    sockets::EndBothWays(socket);
}

void SocketStream::Close()
{
    const auto dropped = TakeHandlers();
    CloseSocket();
}

void SocketStream::CloseSocket()
{
    const std::lock_guard lock(mutex);
    closed = true;
    error_code ignored;
    socket.shutdown(asio::ip::tcp::socket::shutdown_both, ignored);
    socket.close(ignored);
}

void SocketStream::Post(std::function<void()> call)
{
    io->Post(strand, std::move(call));
}

std::shared_ptr<const SocketStream::Handlers> SocketStream::TakeHandlers()
{
    const std::lock_guard lock(mutex);
    closed = true;
    return std::exchange(handlers, nullptr);
}

} // namespace zettransport
