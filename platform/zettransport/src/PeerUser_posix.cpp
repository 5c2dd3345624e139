#include "SocketSystem.h"

#include <array>
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
    bool ownEndFound = false;
    for (const char* path : std::array{"/proc/net/tcp", "/proc/net/tcp6"}) {
        const std::string table = ReadTable(path);
        if (const auto user = FindSocketOwner(table, remote, local))
            return *user == ::geteuid();
        ownEndFound = ownEndFound || FindSocketOwner(table, local, remote).has_value();
    }
    // When a table shows our end and not the other's, the other side has gone. A program that has sent
    // something and left at once must not pass for one of ours. A table that shows neither end tells nothing.
    return !ownEndFound;
}

} // namespace zettransport::sockets
