#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include <zettransport/Export.h>
#include <zettransport/Session.h>

namespace zettransport {

/// TCP sessions, on a few threads of its own. The destructor closes every session, without its callback, and
/// waits until no handler runs any more. On one of its own threads it does not wait for that thread. Any
/// thread may call.
class ZETTRANSPORT_API SocketTransport
{
  public:
    /// Tells who has connected. `sameUser` says whether the process belongs to this process's user. It is
    /// also true when the system cannot tell.
    struct Peer
    {
        std::string address;
        std::uint16_t port = 0;
        bool sameUser = true;
        /// The port at this end.
        std::uint16_t ownPort = 0;
    };
    /// Called for each connection, on a transport thread. When it returns false, the connection is closed.
    using AcceptHandler = std::function<bool(std::shared_ptr<Session>, const Peer&)>;

    static std::shared_ptr<SocketTransport> Create(int threads);
    ~SocketTransport();

    /// Connects within 10 seconds. When that fails, this is traced and the result is null. The session
    /// delivers once it is started.
    std::shared_ptr<Session> ClientStart(const std::string& host, std::uint16_t port);

    /// Listens on 127.0.0.1 at a port that the system chooses, and returns the port. An earlier listener
    /// stops. A session that the handler does not keep is closed. Throws `std::system_error`.
    std::uint16_t ServerStart(AcceptHandler handler);
    /// Stops listening. The sessions go on.
    void ServerStop();

  private:
    explicit SocketTransport(int threads);
    struct State;
    std::shared_ptr<State> state;
};

} // namespace zettransport
