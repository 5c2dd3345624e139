#include <zettransport/PeerProcess.h>

#include <filesystem>
#include <string>
#include <system_error>

#include <boost/asio/ip/address_v4.hpp>

#include "SocketDiagnosis_posix.h"

namespace zettransport {

bool MayBeProcess(const SocketTransport::Peer& peer, std::uint64_t process)
{
    using boost::asio::ip::tcp;
    boost::system::error_code malformed;
    const auto address = boost::asio::ip::make_address(peer.address, malformed);
    if (process == 0 || peer.ownPort == 0 || malformed)
        return true;
    const auto socket =
        AskSocket({address, peer.port}, {boost::asio::ip::address_v4::loopback(), peer.ownPort});
    if (!socket)
        return true;
    const std::string name = "socket:[" + std::to_string(socket->inode) + "]";
    std::error_code error;
    std::filesystem::directory_iterator descriptors("/proc/" + std::to_string(process) + "/fd", error);
    // The system may show the descriptors to nobody else, or the process may have hidden them.
    if (error)
        return true;
    for (; !error && descriptors != std::filesystem::directory_iterator(); descriptors.increment(error)) {
        std::error_code closed;
        if (std::filesystem::read_symlink(descriptors->path(), closed) == name)
            return true;
    }
    return false;
}

} // namespace zettransport
