#pragma once

#include <future>
#include <memory>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>
#include <zetcore/debug/Trace.h>
#include <zettesting/EventLog.h>
#include <zettesting/HostFixture.h>
#include <zettesting/Patience.h>
#include <zettransport/SocketTransport.h>

namespace zettransport {

/// Returns the value of the future. The test fails when it does not come in a generous time.
template<typename T>
T AwaitValue(std::future<T> future)
{
    if (future.wait_for(zettesting::patience) != std::future_status::ready)
        throw std::runtime_error("it did not happen");
    return future.get();
}

/// A server, and the sessions that it has accepted.
class SocketTransportFixture : public zettesting::HostFixture
{
  protected:
    SocketTransportFixture() { zetcore::debug::SetMasterTraceVolume(9); }

    /// The server's next session comes out of the future.
    std::future<std::shared_ptr<Session>> Listen()
    {
        auto accepted = std::make_shared<std::promise<std::shared_ptr<Session>>>();
        port = server->ServerStart([accepted](const std::shared_ptr<Session>& session, const auto&) {
            accepted->set_value(session);
            return true;
        });
        return accepted->get_future();
    }

    void Connect()
    {
        auto accepted = Listen();
        nearEnd = client->ClientStart("127.0.0.1", port);
        ASSERT_TRUE(nearEnd);
        farEnd = AwaitValue(std::move(accepted));
    }

    static void Record(Session& session, zettesting::EventLog& log)
    {
        session.SetCloseCallback([&log](const std::shared_ptr<Session>&) {
            log.Add("closed");
            return 0;
        });
        session.Start([&log](const std::string& frame) { log.Add(frame); });
    }

    /// The log is declared before the transports, because their threads write to it.
    zettesting::EventLog log;
    zettesting::EventLog otherLog;
    std::shared_ptr<SocketTransport> server = SocketTransport::Create(1);
    std::shared_ptr<SocketTransport> client = SocketTransport::Create(1);
    std::uint16_t port = 0;
    std::shared_ptr<Session> nearEnd;
    std::shared_ptr<Session> farEnd;
};

} // namespace zettransport
