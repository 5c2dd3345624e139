#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace zetaudiopluginhostui {

/// A server for one connection that writes any bytes, also such as no session would send. Throws
/// `std::system_error` for what cannot be mended, except that the other side has gone.
class RawServer
{
  public:
    /// Listens on the loopback interface.
    RawServer();
    ~RawServer();

    std::uint16_t Port() const;
    void Accept();
    /// The content of the next frame; empty when the connection has been closed.
    std::optional<std::string> NextFrame();
    /// In pieces of so many bytes, each on its way before the next.
    void Write(std::string_view bytes, std::size_t pieceSize);

  private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace zetaudiopluginhostui
