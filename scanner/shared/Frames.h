#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// How messages are cut out of the pipe between supervisor and worker: four bytes of length in the machine's
/// own order (both ends are the same program), then that many bytes.
namespace zetaudiofilterscan {

/// The longest message either side accepts: a shell of 10,000 plug-ins takes about 5 MiB.
inline constexpr std::size_t maxMessageBytes = std::size_t{16} << 20;

/// Throws `std::length_error` above `maxMessageBytes`.
std::string MakeFrame(std::string_view message);

/// Collects bytes as they come and gives back whole messages. One thread.
class FrameBuffer
{
  public:
    void Append(std::string_view bytes) { buffer.append(bytes); }
    /// The next whole message, or nothing yet. Throws `std::length_error` when the other side announces one
    /// above `maxMessageBytes`; the buffer is of no use then.
    std::optional<std::string> Take();

  private:
    std::string buffer;
    std::size_t taken = 0;
};

} // namespace zetaudiofilterscan
