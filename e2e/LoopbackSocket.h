#pragma once

#include <cstdint>
#include <string>

/// A TCP socket of a test on this machine. Nothing of it blocks for long.
class LoopbackSocket
{
  public:
    LoopbackSocket() = default;
    ~LoopbackSocket();
    LoopbackSocket(LoopbackSocket&& other) noexcept;
    LoopbackSocket& operator=(LoopbackSocket&&) = delete;

    /// At a port of the system's choice; what connects is let in and never looked at.
    static LoopbackSocket Listening();
    static LoopbackSocket ConnectedTo(std::uint16_t port);

    bool IsOpen() const { return descriptor >= 0; }
    std::uint16_t Port() const;
    void Send(const std::string& text) const;
    /// All that the other side sends until it closes; a minute at most.
    std::string ReadToEnd() const;

  private:
    int descriptor = -1;
};
