#pragma once

#include <cstdint>

#include <zettransport/Export.h>
#include <zettransport/SocketTransport.h>

namespace zettransport {

/// True when the process with this number holds the other end of a connection within this machine. It is also
/// true when the system does not tell. Any thread.
ZETTRANSPORT_API bool MayBeProcess(const SocketTransport::Peer& peer, std::uint64_t process);

} // namespace zettransport
