#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace zetaudiopluginhostui {

/// A server for one connection that writes any bytes, even bytes that no session would send. Throws
/// `std::system_error`, but not when the other side has gone.
class RawServer
{
  public:
    /// Listens on the loopback interface.
    RawServer();
    ~RawServer();

    std::uint16_t Port() const;
    void Accept();
    /// Returns the content of the next frame. It is empty when the connection has been closed.
    std::optional<std::string> NextFrame();
    /// Writes pieces of so many bytes, and sends each before the next.
    void Write(std::string_view bytes, std::size_t pieceSize);

  private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace zetaudiopluginhostui
