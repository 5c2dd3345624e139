#include "SocketSystem.h"

#include <filesystem>
#include <future>
#include <string>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <gmock/gmock.h>
#include <zettesting/EventLog.h>
#include <zettesting/HostFixture.h>
#include <zettesting/Patience.h>
#include <zettransport/SocketTransport.h>

#include "SocketDiagnosis_posix.h"

namespace zettransport {

namespace {

class SocketSystemTest : public zettesting::HostFixture
{};

/// Lists the sockets and the event loop's descriptors that child processes would inherit.
std::vector<std::string> InheritableDescriptors()
{
    std::vector<std::string> inheritable;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        const std::string target = std::filesystem::read_symlink(entry, gone).string();
        const int flags = ::fcntl(std::stoi(entry.path().filename().string()), F_GETFD);
        const bool ofInterest = target.starts_with("socket:") || target.starts_with("anon_inode:");
        if (!gone && ofInterest && flags >= 0 && !(flags & FD_CLOEXEC))
            inheritable.push_back(target);
    }
    return inheritable;
}

/// Starts another process, of the user `user`, that connects. It says whether it could, and stays until the
/// other side closes.
pid_t ConnectAs(uid_t user, std::uint16_t port)
{
    const pid_t child = ::fork();
    if (child != 0)
        return child;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    char byte = 0;
    if (::setuid(user) != 0)
        ::_exit(1);
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    if (::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        ::_exit(2);
    while (::read(socket, &byte, 1) > 0) {
    }
    ::_exit(0);
}

TEST_F(SocketSystemTest, ChildProcessesInheritNoSocket)
{
    const auto before = InheritableDescriptors();
    const auto server = SocketTransport::Create(1);
    const auto client = SocketTransport::Create(1);
    const auto accepted = std::make_shared<std::promise<std::shared_ptr<Session>>>();
    const auto port = server->ServerStart([accepted](const std::shared_ptr<Session>& session, const auto&) {
        accepted->set_value(session);
        return true;
    });
    const auto nearEnd = client->ClientStart("127.0.0.1", port);
    ASSERT_TRUE(nearEnd);
    const auto farEnd = accepted->get_future().get();
    EXPECT_EQ(InheritableDescriptors(), before);
}

TEST_F(SocketSystemTest, TellsOtherUsersFromOurs)
{
    // Only root can become another user.
    constexpr uid_t nobody = 65534;
    const uid_t user = ::geteuid() == 0 ? nobody : ::geteuid();
    const auto server = SocketTransport::Create(1);
    const auto sameUser = std::make_shared<std::promise<bool>>();
    const auto port = server->ServerStart([sameUser](const auto&, const SocketTransport::Peer& peer) {
        sameUser->set_value(peer.sameUser);
        return false;
    });
    const pid_t child = ConnectAs(user, port);
    ASSERT_GT(child, 0);
    auto told = sameUser->get_future();
    ASSERT_EQ(told.wait_for(zettesting::patience), std::future_status::ready);
    EXPECT_EQ(told.get(), user == ::geteuid());
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

/// Both ends of a connection within this process.
struct Ends
{
    Ends() : first(context), second(context)
    {
        boost::asio::ip::tcp::acceptor acceptor(context, {boost::asio::ip::address_v4::loopback(), 0});
        first.connect(acceptor.local_endpoint());
        acceptor.accept(second);
    }

    boost::asio::io_context context;
    boost::asio::ip::tcp::socket first;
    boost::asio::ip::tcp::socket second;
};

TEST_F(SocketSystemTest, AsksTheKernelForTheOwnerOfOneSocket)
{
    const Ends ends;
    const auto first = AskSocket(ends.first.local_endpoint(), ends.first.remote_endpoint());
    const auto second = AskSocket(ends.second.local_endpoint(), ends.second.remote_endpoint());
    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->user, ::geteuid());
    EXPECT_EQ(second->user, ::geteuid());
    EXPECT_NE(first->inode, second->inode);
}

TEST_F(SocketSystemTest, AResetConnectionHasNoOwner)
{
    Ends ends;
    const auto remote = ends.second.remote_endpoint();
    const auto local = ends.second.local_endpoint();
    EXPECT_TRUE(sockets::BelongsToSameUser(local, remote));
    ends.first.set_option(boost::asio::socket_base::linger(true, 0));
    ends.first.close();
    EXPECT_FALSE(AskSocket(remote, local));
}

TEST_F(SocketSystemTest, APeerThatHasClosedIsNoneOfOurs)
{
    Ends ends;
    const auto remote = ends.second.remote_endpoint();
    ends.first.close();
    EXPECT_FALSE(AskSocket(remote, ends.second.local_endpoint()));
    EXPECT_FALSE(sockets::BelongsToSameUser(ends.second.local_endpoint(), remote));
}

TEST_F(SocketSystemTest, ConnectSaysWhatWentWrong)
{
    const auto protocol = boost::asio::ip::tcp::v4();
    const sockets::NativeSocket socket = sockets::Open(protocol);
    // Nobody can listen on port 0.
    const sockets::Endpoint nowhere(boost::asio::ip::address_v4::loopback(), 0);
    EXPECT_TRUE(sockets::Connect(socket, nowhere, std::chrono::milliseconds(1000)));
    sockets::Close(socket);
}

} // namespace

} // namespace zettransport
