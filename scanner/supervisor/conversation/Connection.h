#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include <zetcore/serialization/Value.h>
#include <zetmarshal/RPCServer.h>
#include <zettransport/SocketTransport.h>

#include "supervisor/process/Interrupt.h"

namespace zetaudiofilterscan {

/// A request that the scanning thread has to answer.
struct Request
{
    std::string method;
    zetcore::serialization::Array params;
    std::shared_ptr<zetmarshal::RPCResponder> responder;
};

/// The scanner's one connection. It is taken by the host, the process that started the scanner, or, where the
/// system does not tell processes, by the first one of the same user that connects; every other one is closed
/// with a trace line. Requests come on the transport's thread and wait here for the scanning
/// thread; the interrupt is set for each, when the connection is taken, and when it is closed.
class Connection
{
  public:
    /// `hostProcess` as `HostProcessNumber` gives it.
    Connection(Interrupt& interrupt, std::uint64_t hostProcess);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Listens on the loopback interface and returns the port. Throws `std::system_error`.
    std::uint16_t Listen();

    bool IsTaken() const;
    /// True from the moment the other side is gone. Its requests are of no use any more.
    bool IsClosed() const;
    /// The oldest request, if there is one.
    std::optional<Request> NextRequest();

  private:
    bool Accept(std::shared_ptr<zettransport::Session> session,
                const zettransport::SocketTransport::Peer& peer);

    Interrupt& interrupt;
    const std::uint64_t hostProcess;
    mutable std::mutex mutex;
    std::deque<Request> requests;
    std::shared_ptr<zettransport::Session> session;
    std::unique_ptr<zetmarshal::RPCServer> server;
    bool closed = false;
    // This is the last member: its threads end before the members that they use go away.
    std::shared_ptr<zettransport::SocketTransport> transport;
};

} // namespace zetaudiofilterscan
