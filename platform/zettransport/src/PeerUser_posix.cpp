#include "SocketSystem.h"

#include <fstream>
#include <iterator>
#include <string>

#include <unistd.h>

#include "SocketDiagnosis_posix.h"
#include "SocketOwners.h"

namespace zettransport::sockets {

namespace {

std::string ReadTable(const char* path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

bool BelongsToSameUser(const Endpoint& local, const Endpoint& remote)
{
    if (const auto socket = AskSocket(remote, local))
        return socket->user == ::geteuid();
    // The other side has gone. A program that has sent something and left at once must not pass for one of
    // ours.
    if (AskSocket(local, remote))
        return false;
    // The kernel does not answer such questions.
    return MayOwnOtherEnd(::geteuid(), ReadTable("/proc/net/tcp") + ReadTable("/proc/net/tcp6"), local,
                          remote);
}

} // namespace zettransport::sockets
