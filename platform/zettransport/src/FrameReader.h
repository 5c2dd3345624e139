#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace zettransport {

/// The bytes that arrived are no frame, or they break a limit. The message says how. Nothing more can be read
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
    /// Returns the next whole frame, or nothing when more bytes are needed. Throws `FrameError`.
    std::optional<std::string> Next();

  private:
    bool ReadHeader();

    const std::size_t maxHeaderBytes;
    const std::size_t maxFrameBytes;
    std::string buffer;
    /// The bytes before this index have been delivered.
    std::size_t begin = 0;
    /// The length of the frame whose body is awaited, if there is one.
    std::optional<std::size_t> bodyBytes;
};

/// Returns the N of a header, which is its lines with their line ends and without the empty one. Names are
/// compared without regard to letter case. Throws `FrameError` when there is not exactly one good
/// `Content-Length` of at most `limit`.
std::size_t ContentLengthOf(std::string_view header, std::size_t limit);

/// Returns the bytes of the frame as they are sent.
std::string MakeFrame(std::string_view payload);

} // namespace zettransport
