#pragma once

#include <array>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <string>

#include <boost/asio/ip/tcp.hpp>
#include <zettransport/ByteStream.h>

#include "IoThreads.h"

namespace zettransport {

/// A connected TCP socket. A pending operation owns the stream, and `Close`, which its session calls, ends
/// the operation.
class SocketStream final : public ByteStream, public std::enable_shared_from_this<SocketStream>
{
  public:
    /// So many bytes may wait for a peer that does not read; they are four of the largest frames. More than
    /// that breaks the connection.
    static constexpr std::size_t maxQueuedBytes = std::size_t{64} << 20;

    SocketStream(std::shared_ptr<IoThreads> io, boost::asio::ip::tcp::socket connected);

    void Start(BytesHandler bytes, ClosedHandler closed) override;
    /// Sends at once, on the calling thread, as much as the system takes without waiting.
    void Write(std::string bytes) override;
    void Close() override;
    void Post(std::function<void()> call) override;

  private:
    struct Handlers
    {
        BytesHandler bytes;
        ClosedHandler closed;
    };

    void ReadNext();
    void OnRead(const boost::system::error_code& error, std::size_t size);
    void OnWritten(const boost::system::error_code& error, std::size_t size);
    void WriteQueued();
    void BreakWrites();
    void CloseSocket();
    /// Takes the handlers away, for the caller that closes the stream. Null when it was closed already.
    std::shared_ptr<const Handlers> TakeHandlers();

    const std::shared_ptr<IoThreads> io;
    const Strand strand;
    /// The pending read uses this.
    std::array<char, 65536> readBuffer;

    /// Guards what follows, because the socket's own operations are not thread-safe.
    std::mutex mutex;
    boost::asio::ip::tcp::socket socket;
    std::shared_ptr<const Handlers> handlers;
    bool closed = false;
    bool writesBroken = false;
    /// It is not cleared when the stream closes, because a pending write may still read the first element.
    std::deque<std::string> queue;
    std::size_t writtenOfFirst = 0;
    std::size_t queuedBytes = 0;
};

} // namespace zettransport
