#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <system_error>

#include <zettransport/Export.h>

namespace zettransport {

/// A two-way stream of bytes: a socket, or a pair in memory. Always owned by shared pointers.
class ZETTRANSPORT_API ByteStream
{
  public:
    using BytesHandler = std::function<void(std::string_view)>;
    /// No error: the other side closed in order.
    using ClosedHandler = std::function<void(std::error_code)>;

    virtual ~ByteStream();

    /// Starts to deliver. The handlers run one at a time, never inside a call of this stream's own
    /// operations; `closed` is called once, and not after `Close`. Call once.
    virtual void Start(BytesHandler bytes, ClosedHandler closed) = 0;
    /// Queues the bytes and returns at once; nothing happens on a closed stream. Any thread.
    virtual void Write(std::string bytes) = 0;
    /// Bytes that are queued and not sent yet may be lost. Idempotent. Any thread, a handler's included.
    virtual void Close() = 0;
    /// Runs the call where the handlers run, after those that are under way. Any thread.
    virtual void Post(std::function<void()> call) = 0;
};

} // namespace zettransport
