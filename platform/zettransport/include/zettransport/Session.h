#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include <zettransport/ByteStream.h>
#include <zettransport/Export.h>

namespace zettransport {

/// 0 means that there is no error.
using TransportError = int;

/// A connection that carries whole frames: `Content-Length: N\r\n\r\n`, then N bytes. Other header lines are
/// read and ignored. Shared pointers own it. Any thread may call any operation.
///
/// An open session closes in one of two ways. After `Close`, the callback is not called. When the other side
/// closes, the network fails or a frame breaks the limits, the callback is called exactly once.
class ZETTRANSPORT_API Session : public std::enable_shared_from_this<Session>
{
  public:
    /// A larger frame closes the session before it is read. A list of 100,000 plug-ins takes about 10 MiB.
    static constexpr std::size_t maxFrameBytes = std::size_t{16} << 20;
    /// A header may have so many bytes. Ours has 30, and others may add a few lines.
    static constexpr std::size_t maxHeaderBytes = 4096;

    using FrameHandler = std::function<void(std::string frame)>;
    using CloseCallback = std::function<TransportError(std::shared_ptr<Session>)>;

    static std::shared_ptr<Session> Create(std::shared_ptr<ByteStream> stream);
    /// Closes without calling the close callback.
    ~Session();

    /// Starts to deliver frames to the handler, one at a time, on the transport's threads, with no lock held.
    /// Call this once. An exception that leaves the handler aborts the session, with its message as the
    /// reason.
    void Start(FrameHandler handler);
    /// A callback that is set after the other side has closed the session is called all the same, on a
    /// transport thread.
    void SetCloseCallback(CloseCallback callback);
    /// Queues one frame. Returns false when the session is closed or the frame is too large.
    bool Send(std::string_view payload);
    /// Closes without calling the close callback. Returns at once; a handler that is running goes on to its
    /// end.
    void Close();
    /// Closes as if the other side had broken the protocol. The reason is traced, and the close callback is
    /// called.
    void Abort(const std::string& reason);
    bool IsOpen() const;

  private:
    explicit Session(std::shared_ptr<ByteStream> stream);
    struct State;
    std::unique_ptr<State> state;
};

} // namespace zettransport
