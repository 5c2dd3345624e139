#include "Connecting.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace zettestplugin {

namespace {

int FamilyError(int family, int type)
{
    const int socket = ::socket(family, type, 0);
    if (socket < 0)
        return errno;
    ::close(socket);
    return 0;
}

} // namespace

const char* ConnectOut()
{
    if (FamilyError(AF_UNIX, SOCK_STREAM) != 0)
        return "Not Even Local";
    const char* port = std::getenv("ZET_TEST_PORT");
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    if (socket < 0) {
        const bool allRefused = errno == EACCES && FamilyError(AF_INET6, SOCK_DGRAM) == EACCES &&
                                FamilyError(AF_PACKET, SOCK_RAW) == EACCES;
        return allRefused ? "Network Refused" : "Odd Refusal";
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<std::uint16_t>(port ? std::atoi(port) : 0));
    const int result = ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    ::close(socket);
    return result == 0 ? "Network Reached" : "Nobody There";
}

} // namespace zettestplugin
