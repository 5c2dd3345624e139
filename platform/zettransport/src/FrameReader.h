#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace zettransport {

/// The bytes that arrived are no frame, or break a limit. The message says how; nothing more can be read
/// after it.
class FrameError : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

/// Cuts a stream of bytes into frames: `Content-Length: N\r\n\r\n`, then N bytes. One thread at a time.
class FrameReader
{
  public:
    FrameReader(std::size_t maxHeaderBytes, std::size_t maxFrameBytes);

    void Append(std::string_view bytes);
    /// The next whole frame; nothing when more bytes are needed. Throws `FrameError`.
    std::optional<std::string> Next();

  private:
    bool ReadHeader();

    const std::size_t maxHeaderBytes;
    const std::size_t maxFrameBytes;
    std::string buffer;
    /// The bytes before it have been delivered.
    std::size_t begin = 0;
    /// Set while a frame's body is awaited.
    std::optional<std::size_t> bodyBytes;
};

/// The N of a header: its lines with their line ends, without the empty one. Names are compared without
/// regard to letter case. Throws `FrameError` when there is not exactly one good `Content-Length` of at most
/// `limit`.
std::size_t ContentLengthOf(std::string_view header, std::size_t limit);

/// The frame's bytes on the wire.
std::string MakeFrame(std::string_view payload);

} // namespace zettransport
