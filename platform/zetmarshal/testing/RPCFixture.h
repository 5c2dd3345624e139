#pragma once

#include <future>
#include <memory>
#include <string>

#include <gtest/gtest.h>
#include <zetcore/debug/Trace.h>
#include <zettesting/EventLog.h>
#include <zettesting/HostFixture.h>
#include <zettesting/Patience.h>
#include <zettransport/MemoryStream.h>
#include <zettransport/Session.h>

namespace zetmarshal {

/// Two sessions in memory that are each other's far end.
class RPCFixture : public zettesting::HostFixture
{
  protected:
    RPCFixture()
    {
        zetcore::debug::SetMasterTraceVolume(9);
        auto [nearEnd, farEnd] = zettransport::CreateMemoryStreamPair();
        stream = nearEnd;
        session = zettransport::Session::Create(std::move(nearEnd));
        peer = zettransport::Session::Create(std::move(farEnd));
    }

    /// No handler may run any more when the logs are destroyed.
    ~RPCFixture() override
    {
        if (session)
            session->Close();
        peer->Close();
        Settle();
    }

    void RecordClose()
    {
        session->SetCloseCallback([this](const std::shared_ptr<zettransport::Session>&) {
            log.Add("closed");
            return 0;
        });
    }

    /// Starts the peer, which writes down the messages that it gets.
    void StartPeer()
    {
        peer->Start([this](const std::string& frame) { peerLog.Add(frame); });
    }

    /// Returns when all that was on its way has been handled.
    void Settle()
    {
        for (int i = 0; i < 4; ++i) {
            auto done = std::make_shared<std::promise<void>>();
            stream->Post([done] { done->set_value(); });
            ASSERT_EQ(done->get_future().wait_for(zettesting::patience), std::future_status::ready);
        }
    }

    zettesting::EventLog log;
    zettesting::EventLog peerLog;
    std::shared_ptr<zettransport::ByteStream> stream;
    std::shared_ptr<zettransport::Session> session;
    std::shared_ptr<zettransport::Session> peer;
};

} // namespace zetmarshal
