#pragma once

#include <cstdint>
#include <string>

/// A TCP socket on this machine, for tests. No call blocks for long.
class LoopbackSocket
{
  public:
    LoopbackSocket() = default;
    ~LoopbackSocket();
    LoopbackSocket(LoopbackSocket&& other) noexcept;
    LoopbackSocket& operator=(LoopbackSocket&&) = delete;

    /// Listens at a port that the system chooses. Connections are accepted and then ignored.
    static LoopbackSocket Listening();
    static LoopbackSocket ConnectedTo(std::uint16_t port);

    bool IsOpen() const { return descriptor >= 0; }
    std::uint16_t Port() const;
    void Send(const std::string& text) const;
    /// Reads until the other side closes, for a minute at most.
    std::string ReadToEnd() const;

  private:
    int descriptor = -1;
};
