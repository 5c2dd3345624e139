#include <zettransport/SocketTransport.h>

#include <atomic>
#include <string>
#include <thread>

#include <gmock/gmock.h>

#include "testing/SocketTransportFixture.h"

namespace zettransport {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zettesting::EventLog;

class SocketTransportLifetimeTest : public SocketTransportFixture
{};

TEST_F(SocketTransportLifetimeTest, DestroyingATransportClosesItsSessionsWithoutCallback)
{
    Connect();
    Record(*nearEnd, log);
    Record(*farEnd, otherLog);
    client.reset();
    EXPECT_FALSE(nearEnd->IsOpen());
    EXPECT_FALSE(nearEnd->Send("x"));
    EXPECT_THAT(otherLog.Await(1), ElementsAre("closed"));
    nearEnd->SetCloseCallback([this](const std::shared_ptr<Session>&) {
        log.Add("late");
        return 0;
    });
    nearEnd->Abort("late");
    nearEnd->Close();
    EXPECT_THAT(log.Now(), IsEmpty());
}

TEST_F(SocketTransportLifetimeTest, RunsNoHandlerOnceItIsDestroyed)
{
    for (int i = 0; i < 60; ++i) {
        server = SocketTransport::Create(2);
        client = SocketTransport::Create(1 + i % 3);
        Connect();
        std::atomic<bool> destroyed = false;
        std::atomic<int> lateCalls = 0;
        EventLog some;
        nearEnd->Start([&](const std::string& frame) {
            if (destroyed)
                ++lateCalls;
            some.Add(frame);
            nearEnd->Send("more");
        });
        nearEnd->SetCloseCallback([&](const std::shared_ptr<Session>&) {
            if (destroyed)
                ++lateCalls;
            return 0;
        });
        farEnd->Start([&](const std::string&) { farEnd->Send("more"); });
        for (int frame = 0; frame < 5; ++frame)
            farEnd->Send("more");
        some.Await(static_cast<std::size_t>(i % 7));
        if (i % 4 == 0)
            farEnd->Close();
        client.reset();
        destroyed = true;
        server.reset();
        EXPECT_EQ(lateCalls, 0);
    }
}

TEST_F(SocketTransportLifetimeTest, MayBeDestroyedInAHandlerOfItsOwn)
{
    for (int i = 0; i < 60; ++i) {
        server = SocketTransport::Create(1);
        client = SocketTransport::Create(1 + i % 3);
        Connect();
        EventLog events;
        EventLog otherEvents;
        nearEnd->Start([&](const std::string&) {
            client.reset();
            events.Add("destroyed");
        });
        Record(*farEnd, otherEvents);
        farEnd->Send("go");
        EXPECT_THAT(events.Await(1), ElementsAre("destroyed"));
        EXPECT_THAT(otherEvents.Await(1), ElementsAre("closed"));
        EXPECT_FALSE(nearEnd->IsOpen());
        server.reset();
    }
}

TEST_F(SocketTransportLifetimeTest, MayBeDestroyedInItsCloseCallbackAndInItsAcceptHandler)
{
    Connect();
    nearEnd->Start([](const std::string&) {});
    nearEnd->SetCloseCallback([this](const std::shared_ptr<Session>&) {
        client.reset();
        log.Add("client destroyed");
        return 0;
    });
    farEnd->Close();
    EXPECT_THAT(log.Await(1), ElementsAre("client destroyed"));

    client = SocketTransport::Create(1);
    port = server->ServerStart([this](const auto&, const auto&) {
        server.reset();
        log.Add("server destroyed");
        return true;
    });
    nearEnd = client->ClientStart("127.0.0.1", port);
    EXPECT_THAT(log.Await(2), ElementsAre("client destroyed", "server destroyed"));
}

TEST_F(SocketTransportLifetimeTest, CallsBackAtMostOnceHoweverClosesRace)
{
    for (int i = 0; i < 300; ++i) {
        Connect();
        std::atomic<int> calls = 0;
        EventLog called;
        nearEnd->Start([](const std::string&) {});
        nearEnd->SetCloseCallback([&](const std::shared_ptr<Session>&) {
            ++calls;
            called.Add("closed");
            return 0;
        });
        farEnd->Start([](const std::string&) {});
        const bool weClose = i % 2 == 0;
        std::thread closing([&] { weClose ? nearEnd->Close() : nearEnd->Abort("race"); });
        std::thread sending([&] { nearEnd->Send("race"); });
        farEnd->Close();
        closing.join();
        sending.join();
        if (!weClose)
            called.Await(1);
        // With its thread gone, nothing can be on its way any more.
        client = SocketTransport::Create(1);
        if (weClose) {
            EXPECT_LE(calls, 1);
        } else {
            EXPECT_EQ(calls, 1);
        }
    }
}

} // namespace

} // namespace zettransport
