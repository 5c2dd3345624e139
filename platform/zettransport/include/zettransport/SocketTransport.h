#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include <zettransport/Export.h>
#include <zettransport/Session.h>

namespace zettransport {

/// TCP sessions on a few threads of its own. The destructor closes every session (without callback) and waits
/// until no handler runs any more; on one of its own threads it does not wait for that thread. Any thread may
/// call.
class ZETTRANSPORT_API SocketTransport
{
  public:
    /// Who connected: the address and port, and whether the process belongs to this process's user (true also
    /// where the system cannot tell).
    struct Peer
    {
        std::string address;
        std::uint16_t port = 0;
        bool sameUser = true;
        /// The port at this end.
        std::uint16_t ownPort = 0;
    };
    /// Called for each connection, on a transport thread. Returning false closes it.
    using AcceptHandler = std::function<bool(std::shared_ptr<Session>, const Peer&)>;

    static std::shared_ptr<SocketTransport> Create(int threads);
    ~SocketTransport();

    /// Connects within 10 seconds; null (traced) when that fails. The session delivers once it is started.
    std::shared_ptr<Session> ClientStart(const std::string& host, std::uint16_t port);

    /// Listens on 127.0.0.1 at a port of the system's choice and returns the port; an earlier listener stops.
    /// A session that the handler does not keep closes. Throws `std::system_error`.
    std::uint16_t ServerStart(AcceptHandler handler);
    /// Stops listening; sessions go on.
    void ServerStop();

  private:
    explicit SocketTransport(int threads);
    struct State;
    std::shared_ptr<State> state;
};

} // namespace zettransport
