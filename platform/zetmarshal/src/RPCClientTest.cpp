#include <zetmarshal/RPCClient.h>

#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>

#include <gmock/gmock.h>
#include <zetcore/string/Utf.h>
#include <zetmarshal/JsonValue.h>

#include "testing/RPCFixture.h"

namespace zetmarshal {

namespace {

using namespace zetcore::serialization;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using zettesting::EventLog;

constexpr char announced[] = R"({"jsonrpc":"2.0","method":"rpc.announce","params":["Client \u00e4"]})";

class RPCClientTest : public RPCFixture
{
  protected:
    void MakeClient() { client = std::make_unique<RPCClient>(session, L"ClientUnknown"); }

    void SendRequest()
    {
        client->SendRequest(
            BuildCall("method", MakeValue(Array())),
            [this](const ValuePtr& result, long long id) {
                log.Add("result " + std::to_string(id) + " " + ToJson(result));
            },
            [this](int code, const std::wstring& message, long long id) {
                log.Add("error " + std::to_string(id) + " " + std::to_string(code) + " " +
                        zetcore::string::UTF16to8(message));
            });
    }

    std::unique_ptr<RPCClient> client;
};

TEST_F(RPCClientTest, AnnouncesItsName)
{
    StartPeer();
    client = std::make_unique<RPCClient>(session, L"Client \u00e4");
    const auto frames = peerLog.Await(1);
    ASSERT_EQ(frames.size(), 1u);
    EXPECT_EQ(ToJson(FromJson(frames[0])), ToJson(FromJson(announced)));
}

TEST_F(RPCClientTest, SendsRequestsWithTheirArgumentsAndAnIdEach)
{
    StartPeer();
    MakeClient();
    const Call call = BuildCall("a.b", MakeValue(Array{MakeString("x\xFF"), MakeValue(true)}));
    client->SendRequest(call, nullptr, nullptr);
    client->SendRequest(BuildCall("c", MakeValue(Array())), nullptr, nullptr);
    EXPECT_THAT(peerLog.Await(3),
                ElementsAre(HasSubstr("rpc.announce"),
                            "{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"a.b\",\"params\":[\"x\xFF\",true]}",
                            "{\"jsonrpc\":\"2.0\",\"id\":2,\"method\":\"c\",\"params\":[]}"));
}

TEST_F(RPCClientTest, CallsTheHandlerOfEachReply)
{
    MakeClient();
    for (int i = 0; i < 4; ++i)
        SendRequest();
    peer->Send(R"({"jsonrpc":"2.0","id":2,"result":{}})");
    peer->Send(R"({"jsonrpc":"2.0","id":4,"error":{"code":-32001,"message":"no \u00e4","data":[1]}})");
    peer->Send(R"({"jsonrpc":"2.0","id":1,"result":null})");
    peer->Send(R"({"id":3,"result":{"value":18446744073709551615},"jsonrpc":"2.0"})");
    EXPECT_THAT(log.Await(4), ElementsAre("result 2 {}", "error 4 -32001 no \xC3\xA4", "result 1 null",
                                          "result 3 {\"value\":18446744073709551615}"));
}

TEST_F(RPCClientTest, HandlersMayBeMissing)
{
    MakeClient();
    client->SendRequest(BuildCall("a", MakeValue(Array())), nullptr, nullptr);
    client->SendRequest(BuildCall("a", MakeValue(Array())), nullptr, nullptr);
    SendRequest();
    peer->Send(R"({"jsonrpc":"2.0","id":1,"result":1})");
    peer->Send(R"({"jsonrpc":"2.0","id":2,"error":{"code":1,"message":""}})");
    peer->Send(R"({"jsonrpc":"2.0","id":3,"result":1})");
    EXPECT_THAT(log.Await(1), ElementsAre("result 3 1"));
}

TEST_F(RPCClientTest, IgnoresASecondReplyAndRequests)
{
    RecordClose();
    MakeClient();
    SendRequest();
    SendRequest();
    peer->Send(R"({"jsonrpc":"2.0","id":1,"result":1})");
    peer->Send(R"({"jsonrpc":"2.0","id":1,"result":2})");
    peer->Send(R"({"jsonrpc":"2.0","id":2,"method":"x"})");
    peer->Send(R"({"jsonrpc":"2.0","id":2,"result":4})");
    EXPECT_THAT(log.Await(2), ElementsAre("result 1 1", "result 2 4"));
    EXPECT_THAT(*traceLines,
                Contains(HasSubstr("Ignored a reply to a request that is not pending any more")));
    EXPECT_THAT(*traceLines, Contains(HasSubstr("Ignored a request")));
}

TEST_F(RPCClientTest, AbortsForFramesThatAreNoReply)
{
    for (const char* frame : {"",
                              "garbage",
                              "{",
                              "7",
                              "\"text\"",
                              "[]",
                              "{}",
                              R"({"id":1,"result":1})",
                              R"({"jsonrpc":"1.0","id":1,"result":1})",
                              R"({"jsonrpc":2.0,"id":1,"result":1})",
                              R"({"jsonrpc":"2.0","id":1})",
                              R"({"jsonrpc":"2.0","id":1,"result":1,"error":{"code":1,"message":""}})",
                              R"({"jsonrpc":"2.0","id":1,"error":1})",
                              R"({"jsonrpc":"2.0","id":1,"error":null})",
                              R"({"jsonrpc":"2.0","id":1,"error":{"code":1}})",
                              R"({"jsonrpc":"2.0","id":1,"error":{"message":""}})",
                              R"({"jsonrpc":"2.0","id":1,"error":{"code":4294967296,"message":""}})",
                              R"([{"jsonrpc":"2.0","id":1,"result":1}])",
                              R"({"jsonrpc":"2.0","id":2,"result":3})",
                              R"({"jsonrpc":"2.0","id":0,"result":3})",
                              R"({"jsonrpc":"2.0","id":"1","result":3})",
                              R"({"jsonrpc":"2.0","id":null,"error":{"code":1,"message":"x"}})",
                              R"({"jsonrpc":"2.0","result":3})"}) {
        auto [nearEnd, farEnd] = zettransport::CreateMemoryStreamPair();
        const auto aborted = zettransport::Session::Create(nearEnd);
        const auto sender = zettransport::Session::Create(farEnd);
        EventLog events;
        aborted->SetCloseCallback([&](const auto&) {
            events.Add("closed");
            return 0;
        });
        RPCClient unfortunate(aborted, L"x");
        unfortunate.SendRequest(
            BuildCall("a", MakeValue(Array())), [&](const auto&, long long) { events.Add("result"); },
            [&](int, const auto&, long long) { events.Add("error"); });
        sender->Send(frame);
        EXPECT_THAT(events.Await(1), ElementsAre("closed")) << frame;
    }
}

TEST_F(RPCClientTest, AbortsForDeepNesting)
{
    RecordClose();
    MakeClient();
    peer->Send(R"({"jsonrpc":"2.0","id":1,"result":)" + std::string(64, '[') + std::string(64, ']') + "}");
    EXPECT_THAT(log.Await(1), ElementsAre("closed"));
    EXPECT_THAT(*traceLines, Contains(HasSubstr("nested deeper than 64")));
}

TEST_F(RPCClientTest, AnExceptionFromAHandlerIsTracedAndAborts)
{
    RecordClose();
    MakeClient();
    client->SendRequest(
        BuildCall("a", MakeValue(Array())),
        [](const ValuePtr& result, long long) { GetVariantInObject(result, "value"); }, nullptr);
    SendRequest();
    peer->Send(R"({"jsonrpc":"2.0","id":1,"result":{}})");
    peer->Send(R"({"jsonrpc":"2.0","id":2,"result":{}})");
    EXPECT_THAT(log.Await(1), ElementsAre("closed"));
    Settle();
    EXPECT_THAT(log.Now(), ElementsAre("closed"));
    EXPECT_THAT(*traceLines, Contains(HasSubstr("value")));
}

TEST_F(RPCClientTest, HandlersMayTakeTheMutexThatTheCallerHolds)
{
    peer->Start([this](const std::string& frame) {
        if (frame.find("\"id\":1") != std::string::npos)
            peer->Send(R"({"jsonrpc":"2.0","id":1,"result":{}})");
        if (frame.find("\"id\":2") != std::string::npos)
            peer->Send(R"({"jsonrpc":"2.0","id":2,"result":{}})");
    });
    MakeClient();
    std::mutex ours;
    const Call call = BuildCall("a", MakeValue(Array()));
    {
        const std::lock_guard sending(ours);
        client->SendRequest(
            call,
            [&](const ValuePtr&, long long) {
                const std::lock_guard lock(ours);
                client->SendRequest(
                    call, [&](const ValuePtr&, long long) { log.Add("second"); }, nullptr);
                log.Add("first");
            },
            nullptr);
        EXPECT_THAT(log.Now(), IsEmpty());
    }
    EXPECT_THAT(log.Await(2), ElementsAre("first", "second"));
}

TEST_F(RPCClientTest, MayBeDestroyedInItsHandler)
{
    MakeClient();
    client->SendRequest(
        BuildCall("a", MakeValue(Array())),
        [this](const ValuePtr&, long long) {
            client.reset();
            log.Add("destroyed");
        },
        nullptr);
    SendRequest();
    peer->Send(R"({"jsonrpc":"2.0","id":1,"result":{}})");
    peer->Send(R"({"jsonrpc":"2.0","id":2,"result":{}})");
    EXPECT_THAT(log.Await(1), ElementsAre("destroyed"));
    Settle();
    EXPECT_THAT(log.Now(), ElementsAre("destroyed"));
    EXPECT_TRUE(session->IsOpen());
}

TEST_F(RPCClientTest, DropsHandlersUncalledWhenTheSessionCloses)
{
    for (const bool weClose : {true, false}) {
        auto [nearEnd, farEnd] = zettransport::CreateMemoryStreamPair();
        const auto closing = zettransport::Session::Create(nearEnd);
        RPCClient idle(closing, L"x");
        {
            const std::shared_ptr<void> guard(nullptr, [this](void*) { peerLog.Add("dropped"); });
            idle.SendRequest(
                BuildCall("a", MakeValue(Array())),
                [guard, this](const ValuePtr&, long long) { log.Add("called"); }, nullptr);
        }
        if (weClose)
            closing->Close();
        else
            farEnd->Close();
        EXPECT_EQ(peerLog.Await(weClose ? 1 : 2).size(), weClose ? 1u : 2u);
    }
    EXPECT_THAT(log.Now(), IsEmpty());
}

TEST_F(RPCClientTest, CallsNoHandlerOnAClosedSession)
{
    MakeClient();
    session->Close();
    SendRequest();
    Settle();
    EXPECT_THAT(log.Now(), IsEmpty());
}

TEST_F(RPCClientTest, MayBeMadeOnAClosedSession)
{
    session->Close();
    MakeClient();
    SendRequest();
    Settle();
    EXPECT_THAT(log.Now(), IsEmpty());
}

TEST_F(RPCClientTest, RefusesRequestsThatCannotBeSent)
{
    MakeClient();
    const auto send = [this](ValuePtr argument) {
        client->SendRequest(BuildCall("a", MakeValue(Array{std::move(argument)})), nullptr, nullptr);
    };
    EXPECT_THROW(send(MakeValue(std::wstring(L"wide"))), std::bad_any_cast);
    EXPECT_THROW(send(MakeString(std::string(zettransport::Session::maxFrameBytes, 'x'))), std::length_error);
    EXPECT_THROW(send(FromJson(std::string(63, '[') + std::string(63, ']'))), std::length_error);
    SendRequest();
    peer->Send(R"({"jsonrpc":"2.0","id":4,"result":"the session goes on"})");
    EXPECT_THAT(log.Await(1), ElementsAre("result 4 \"the session goes on\""));
}

} // namespace

} // namespace zetmarshal
