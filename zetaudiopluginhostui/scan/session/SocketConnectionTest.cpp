#include "scan/session/SocketConnection.h"

#include <future>
#include <thread>

#include <zetmarshal/JsonValue.h>
#include <zettesting/HostFixture.h>

#include "testing/RawServer.h"

namespace zetaudiopluginhostui {
namespace {

using zetcore::serialization::BuildCall;

class SocketConnectionTest : public zettesting::HostFixture
{
  protected:
    static zetcore::serialization::Call Call() { return BuildCall("method", zetmarshal::FromJson("[]")); }

    RawServer server;
    SocketConnection connection;
};

TEST_F(SocketConnectionTest, AnnouncesItselfByTheAgreedName)
{
    ASSERT_TRUE(connection.Open(server.Port()));
    server.Accept();
    const auto frame = server.NextFrame();
    ASSERT_TRUE(frame);
    EXPECT_NE(frame->find("\"rpc.announce\""), frame->npos) << *frame;
    EXPECT_NE(frame->find("[\"ClientUnknown\"]"), frame->npos) << *frame;
}

TEST_F(SocketConnectionTest, ARequestIsAnsweredOnAnotherThread)
{
    ASSERT_TRUE(connection.Open(server.Port()));
    server.Accept();
    std::promise<std::thread::id> answered;
    connection.Send(Call(), [&](auto&&...) { answered.set_value(std::this_thread::get_id()); }, {});
    server.NextFrame();
    server.NextFrame();
    const std::string reply = R"({"jsonrpc":"2.0","id":1,"result":null})";
    server.Write("Content-Length: " + std::to_string(reply.size()) + "\r\n\r\n" + reply, 1000);
    EXPECT_TRUE(answered.get_future().get() != std::this_thread::get_id());
}

TEST_F(SocketConnectionTest, TheCallbackIsCalledWhenTheOtherSideClosesAndNotWhenThisOneDoes)
{
    std::promise<void> closed;
    {
        RawServer other;
        ASSERT_TRUE(connection.Open(other.Port()));
        other.Accept();
        connection.SetCloseCallback([&](auto&&) {
            closed.set_value();
            return 0;
        });
    }
    closed.get_future().wait();
    ASSERT_TRUE(connection.Open(server.Port()));
    connection.SetCloseCallback([](auto&&) {
        ADD_FAILURE() << "called";
        return 0;
    });
    connection.Close();
}

TEST_F(SocketConnectionTest, WithoutAConnectionARequestIsDroppedAndACloseDoesNothing)
{
    const auto unexpected = [](auto&&...) { ADD_FAILURE() << "called"; };
    connection.Send(Call(), unexpected, unexpected);
    connection.Close();
    ASSERT_TRUE(connection.Open(server.Port()));
    connection.Close();
    connection.Close();
    connection.Send(Call(), unexpected, unexpected);
    std::uint16_t closedPort = 0;
    {
        const RawServer gone;
        closedPort = gone.Port();
    }
    EXPECT_FALSE(connection.Open(closedPort));
    connection.Close();
}

} // namespace
} // namespace zetaudiopluginhostui
