#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <system_error>

#include <zettransport/Export.h>

namespace zettransport {

/// A two-way stream of bytes, which is a socket or one end of a pair in memory. Shared pointers always own
/// it.
class ZETTRANSPORT_API ByteStream
{
  public:
    using BytesHandler = std::function<void(std::string_view)>;
    /// Called without an error when the other side has closed in order.
    using ClosedHandler = std::function<void(std::error_code)>;

    virtual ~ByteStream();

    /// Starts to deliver. The handlers run one at a time, and never inside a call of this stream's own
    /// operations. `closed` is called once, and not after `Close`. Call this once.
    virtual void Start(BytesHandler bytes, ClosedHandler closed) = 0;
    /// Queues the bytes and returns at once. Nothing happens on a closed stream. Any thread.
    virtual void Write(std::string bytes) = 0;
    /// Closes the stream. Bytes that are queued and not sent yet may be lost. A second call does nothing. Any
    /// thread, also that of a handler.
    virtual void Close() = 0;
    /// Runs the call where the handlers run, after those that are under way. Any thread.
    virtual void Post(std::function<void()> call) = 0;
};

} // namespace zettransport
