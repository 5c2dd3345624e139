#include <zettransport/SocketTransport.h>

#include <map>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <boost/asio/connect.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/write.hpp>
#include <gmock/gmock.h>

#include "testing/SocketTransportFixture.h"

namespace zettransport {

namespace {

using boost::asio::ip::tcp;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class SocketTransportTest : public SocketTransportFixture
{};

TEST_F(SocketTransportTest, CarriesFramesBothWaysInOrder)
{
    Connect();
    farEnd->Start([this](const std::string& frame) { farEnd->Send("re " + frame); });
    Record(*nearEnd, log);
    for (int i = 0; i < 2000; ++i)
        EXPECT_TRUE(nearEnd->Send(std::to_string(i)));
    const auto frames = log.Await(2000);
    ASSERT_EQ(frames.size(), 2000u);
    for (std::size_t i = 0; i < frames.size(); ++i)
        ASSERT_EQ(frames[i], "re " + std::to_string(i));
}

TEST_F(SocketTransportTest, CarriesTheLargestFrame)
{
    Connect();
    std::string large(Session::maxFrameBytes, ' ');
    for (std::size_t i = 0; i < large.size(); ++i)
        large[i] = static_cast<char>(i * 7 % 251);
    farEnd->Start([this](const std::string& frame) { farEnd->Send(frame); });
    Record(*nearEnd, log);
    EXPECT_TRUE(nearEnd->Send(large));
    EXPECT_TRUE(nearEnd->Send("after"));
    const auto frames = log.Await(2);
    ASSERT_EQ(frames.size(), 2u);
    EXPECT_TRUE(frames[0] == large);
    EXPECT_EQ(frames[1], "after");
}

TEST_F(SocketTransportTest, KeepsEachThreadsFramesInOrder)
{
    Connect();
    Record(*farEnd, log);
    std::vector<std::thread> senders;
    for (const char name : {'a', 'b', 'c'})
        senders.emplace_back([this, name] {
            for (int i = 0; i < 300; ++i)
                nearEnd->Send(name + std::to_string(i));
        });
    for (std::thread& sender : senders)
        sender.join();
    const auto frames = log.Await(900);
    ASSERT_EQ(frames.size(), 900u);
    std::map<char, int> next;
    for (const std::string& frame : frames)
        EXPECT_EQ(frame, frame[0] + std::to_string(next[frame[0]]++));
}

TEST_F(SocketTransportTest, TellsWhoConnected)
{
    const auto accepted = std::make_shared<std::promise<SocketTransport::Peer>>();
    port = server->ServerStart([accepted](const auto&, const SocketTransport::Peer& peer) {
        accepted->set_value(peer);
        return true;
    });
    nearEnd = client->ClientStart("127.0.0.1", port);
    const auto peer = AwaitValue(accepted->get_future());
    EXPECT_EQ(peer.address, "127.0.0.1");
    EXPECT_NE(peer.port, 0);
    EXPECT_NE(peer.port, port);
    EXPECT_TRUE(peer.sameUser);
}

TEST_F(SocketTransportTest, ConnectsToAHostByName)
{
    auto accepted = Listen();
    nearEnd = client->ClientStart("localhost", port);
    ASSERT_TRUE(nearEnd);
    EXPECT_TRUE(AwaitValue(std::move(accepted)));
}

TEST_F(SocketTransportTest, GivesNoSessionWhenNobodyListens)
{
    port = server->ServerStart([](const auto&, const auto&) { return true; });
    server->ServerStop();
    EXPECT_FALSE(client->ClientStart("127.0.0.1", port));
    EXPECT_THAT(*traceLines, Contains(HasSubstr("Cannot connect to 127.0.0.1 port " + std::to_string(port))));
    EXPECT_FALSE(client->ClientStart("no such host.invalid", port));
}

TEST_F(SocketTransportTest, SessionsGoOnWhenTheServerStopsListening)
{
    Connect();
    Record(*farEnd, log);
    server->ServerStop();
    server->ServerStop();
    EXPECT_TRUE(nearEnd->Send("still here"));
    EXPECT_THAT(log.Await(1), ElementsAre("still here"));
}

TEST_F(SocketTransportTest, AcceptsAgainAtANewPort)
{
    Connect();
    const std::uint16_t before = port;
    auto accepted = Listen();
    EXPECT_FALSE(client->ClientStart("127.0.0.1", before));
    const auto second = client->ClientStart("127.0.0.1", port);
    ASSERT_TRUE(second);
    EXPECT_NE(AwaitValue(std::move(accepted)), farEnd);
}

TEST_F(SocketTransportTest, ClosesAConnectionThatTheHandlerRefuses)
{
    port = server->ServerStart([this](const std::shared_ptr<Session>& session, const auto&) -> bool {
        farEnd = session;
        return false;
    });
    nearEnd = client->ClientStart("127.0.0.1", port);
    Record(*nearEnd, log);
    EXPECT_THAT(log.Await(1), ElementsAre("closed"));
    server.reset();
    EXPECT_FALSE(farEnd->IsOpen());
}

TEST_F(SocketTransportTest, ClosesAConnectionWhoseHandlerThrowsAndGoesOnListening)
{
    port =
        server->ServerStart([](const auto&, const auto&) -> bool { throw std::runtime_error("Bad thing"); });
    for (std::size_t i = 1; i <= 3; ++i) {
        const auto session = client->ClientStart("127.0.0.1", port);
        ASSERT_TRUE(session);
        Record(*session, log);
        EXPECT_EQ(log.Await(i).size(), i);
    }
    server.reset();
    EXPECT_THAT(*traceLines, Contains(HasSubstr("Bad thing")));
}

TEST_F(SocketTransportTest, ClosesASessionThatNobodyKeeps)
{
    port = server->ServerStart([](const auto&, const auto&) { return true; });
    nearEnd = client->ClientStart("127.0.0.1", port);
    Record(*nearEnd, log);
    EXPECT_THAT(log.Await(1), ElementsAre("closed"));
}

TEST_F(SocketTransportTest, CallsBackOnceWhenTheOtherSideCloses)
{
    Connect();
    Record(*nearEnd, log);
    Record(*farEnd, otherLog);
    farEnd->Close();
    EXPECT_THAT(log.Await(1), ElementsAre("closed"));
    EXPECT_FALSE(nearEnd->IsOpen());
    EXPECT_FALSE(nearEnd->Send("x"));
    client.reset();
    server.reset();
    EXPECT_THAT(log.Now(), ElementsAre("closed"));
    EXPECT_THAT(otherLog.Now(), IsEmpty());
}

TEST_F(SocketTransportTest, CallsBackWhenTheConnectionIsReset)
{
    auto accepted = Listen();
    boost::asio::io_context context;
    tcp::socket raw(context);
    raw.connect({boost::asio::ip::address_v4::loopback(), port});
    farEnd = AwaitValue(std::move(accepted));
    Record(*farEnd, log);
    raw.set_option(boost::asio::socket_base::linger(true, 0));
    raw.close();
    EXPECT_THAT(log.Await(1), ElementsAre("closed"));
}

TEST_F(SocketTransportTest, GivesUpAPeerThatDoesNotRead)
{
    auto accepted = Listen();
    boost::asio::io_context context;
    tcp::socket raw(context);
    raw.connect({boost::asio::ip::address_v4::loopback(), port});
    farEnd = AwaitValue(std::move(accepted));
    Record(*farEnd, log);
    const std::string large(Session::maxFrameBytes, 'x');
    for (int i = 0; i < 8; ++i)
        farEnd->Send(large);
    EXPECT_THAT(log.Await(1), ElementsAre("closed"));
}

TEST_F(SocketTransportTest, ClosesForGarbageFromTheNetwork)
{
    auto accepted = Listen();
    boost::asio::io_context context;
    tcp::socket raw(context);
    raw.connect({boost::asio::ip::address_v4::loopback(), port});
    farEnd = AwaitValue(std::move(accepted));
    Record(*farEnd, log);
    boost::asio::write(raw, boost::asio::buffer(std::string("GET / HTTP/1.1\r\nHost: x\r\n\r\n")));
    EXPECT_THAT(log.Await(1), ElementsAre("closed"));
    std::string rest;
    boost::system::error_code error;
    boost::asio::read_until(raw, boost::asio::dynamic_buffer(rest), "never", error);
    EXPECT_TRUE(error);
    EXPECT_EQ(rest, "");
}

} // namespace

} // namespace zettransport
