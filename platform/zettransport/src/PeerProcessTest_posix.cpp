#include <zettesting/Patience.h>
#include <zettransport/PeerProcess.h>

#include <future>
#include <memory>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zettransport {
namespace {

using namespace std::chrono_literals;

/// One connection of this process to itself.
class PeerProcess : public ::testing::Test
{
  protected:
    PeerProcess()
    {
        const auto accepted = std::make_shared<std::promise<SocketTransport::Peer>>();
        const auto port = server->ServerStart(
            [this, accepted](std::shared_ptr<Session> opened, const SocketTransport::Peer& from) {
                held = std::move(opened);
                accepted->set_value(from);
                return true;
            });
        session = client->ClientStart("127.0.0.1", port);
        auto result = accepted->get_future();
        if (result.wait_for(zettesting::patience) == std::future_status::ready)
            peer = result.get();
    }

    SocketTransport::Peer peer;
    std::shared_ptr<Session> held, session;
    std::shared_ptr<SocketTransport> server = SocketTransport::Create(1), client = SocketTransport::Create(1);
};

TEST_F(PeerProcess, IsToldFromAnotherOne)
{
    ASSERT_NE(peer.ownPort, 0);
    EXPECT_TRUE(MayBeProcess(peer, static_cast<std::uint64_t>(::getpid())));
    // This process belongs to us, and it has none of our sockets.
    int ready[2], gate[2];
    ASSERT_EQ(::pipe(ready), 0);
    ASSERT_EQ(::pipe(gate), 0);
    const pid_t other = ::fork();
    if (other == 0) {
        ::dup2(ready[1], 0);
        ::dup2(gate[0], 1);
        ::close_range(2, ~0U, 0);
        char byte = 0;
        ::_exit(::write(0, &byte, 1) == 1 && ::read(1, &byte, 1) == 0 ? 0 : 1);
    }
    ::close(gate[0]);
    char byte = 0;
    EXPECT_EQ(::read(ready[0], &byte, 1), 1);
    EXPECT_FALSE(MayBeProcess(peer, static_cast<std::uint64_t>(other)));
    for (const int descriptor : {gate[1], ready[0], ready[1]})
        ::close(descriptor);
    int status = -1;
    EXPECT_EQ(::waitpid(other, &status, 0), other);
    EXPECT_EQ(status, 0);
}

TEST_F(PeerProcess, MayBeAnyWhereNothingIsTold)
{
    EXPECT_TRUE(MayBeProcess(peer, 0));
    EXPECT_TRUE(MayBeProcess({"no address", 1, true, 2}, 1));
    EXPECT_TRUE(MayBeProcess(peer, 0x7FFFFFFF)) << "there is no such process";
}

} // namespace
} // namespace zettransport
