#include <zetmarshal/RPCServer.h>

#include <algorithm>
#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <zetmarshal/JsonValue.h>
#include <zetmarshal/RPCClient.h>
#include <zettransport/SocketTransport.h>

#include "testing/RPCFixture.h"

namespace zetmarshal {

namespace {

using namespace zetcore::serialization;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using zettesting::EventLog;
using Responder = std::shared_ptr<RPCResponder>;

class RPCServerTest : public RPCFixture
{
  protected:
    void Start()
    {
        server = std::make_unique<RPCServer>(session);
        server->Register("echo", [](const Array& params, const Responder& responder) {
            responder->Succeed(MakeValue(params));
        });
        server->Register("refuse", [](const Array&, const Responder&) {
            throw RPCError(RPCErrorCode::OutOfOrder, "not \"now\"");
        });
        server->Register("fail", [](const Array&, const Responder&) { throw std::logic_error("Bad thing"); });
        server->Register("forget", [](const Array&, const Responder&) {});
        server->Register("keep", [this](const Array&, const Responder& responder) {
            kept = responder;
            log.Add("kept");
        });
        server->Register("twice", [](const Array&, const Responder& responder) {
            responder->Fail(RPCErrorCode::Failed, "first");
            responder->Succeed(nullptr);
            responder->Fail(RPCErrorCode::Failed, "third");
        });
        server->Register("unsendable", [](const Array&, const Responder& responder) {
            responder->Succeed(MakeValue(std::wstring(L"wide")));
        });
        server->Register("huge", [](const Array&, const Responder& responder) {
            responder->Succeed(MakeString(std::string(zettransport::Session::maxFrameBytes, 'x')));
        });
        RecordClose();
        server->Start();
        StartPeer();
    }

    /// Returns the server's answers to one frame.
    std::vector<std::string> AnswersTo(const std::string& frame)
    {
        const std::size_t before = peerLog.Now().size();
        peer->Send(frame);
        Settle();
        auto answers = peerLog.Now();
        answers.erase(answers.begin(), answers.begin() + static_cast<std::ptrdiff_t>(before));
        return answers;
    }

    Responder kept;
    std::unique_ptr<RPCServer> server;
};

TEST_F(RPCServerTest, AnswersWithTheRequestsId)
{
    Start();
    for (const char* id : {"1", "-7", "18446744073709551615", "\"text \\\"x\\\"\"", "null", "1.5"})
        EXPECT_THAT(
            AnswersTo(std::string(R"({"jsonrpc":"2.0","method":"echo","params":[1,"a"],"id":)") + id + "}"),
            ElementsAre(std::string(R"({"jsonrpc":"2.0","id":)") + id + R"(,"result":[1,"a"]})"));
}

TEST_F(RPCServerTest, TakesMissingParametersAsNone)
{
    Start();
    EXPECT_THAT(AnswersTo(R"({"jsonrpc":"2.0","method":"echo","id":1})"),
                ElementsAre(R"({"jsonrpc":"2.0","id":1,"result":[]})"));
}

TEST_F(RPCServerTest, AnswersErrorsWithTheirCodeAndMessage)
{
    Start();
    const std::vector<std::vector<std::string>> cases = {
        {R"("method":"nothing")", "-32601", R"(there is no method \"nothing\")"},
        {R"("method":"echo","params":{"a":1})", "-32602", R"(parameters of \"echo\" must be an array)"},
        {R"("method":"echo","params":7)", "-32602", "must be an array"},
        {R"("method":"echo","params":null)", "-32602", "must be an array"},
        {R"("method":7)", "-32600", "the method must be a string"},
        {R"("params":[])", "-32600", "the method must be a string"},
        {R"("method":"refuse")", "-32000", R"(not \"now\")"},
        {R"("method":"fail")", "-32603", "Bad thing"},
        {R"("method":"forget")", "-32603", "the request was not answered"},
        {R"("method":"twice")", "-32001", "first"},
        {R"("method":"unsendable")", "-32603", "the result cannot be sent"},
        {R"("method":"huge")", "-32603", "the reply is larger than a frame may be"},
        {R"("method":")" + std::string(1000, 'm') + "\"", "-32601", "mmm...\\\""},
    };
    for (const auto& each : cases)
        EXPECT_THAT(
            AnswersTo(R"({"jsonrpc":"2.0","id":5,)" + each[0] + "}"),
            ElementsAre(AllOf(HasSubstr(R"("id":5,"error":{"code":)" + each[1] + ","), HasSubstr(each[2]))))
            << each[0];
    EXPECT_TRUE(session->IsOpen());
}

TEST_F(RPCServerTest, AnswersUnusableRequestsWithoutAnId)
{
    Start();
    EXPECT_THAT(AnswersTo(R"([{"jsonrpc":"2.0","method":"echo","id":1}])"),
                ElementsAre(R"({"jsonrpc":"2.0","id":null,"error":{"code":-32600,)"
                            R"("message":"batches are not supported"}})"));
    EXPECT_THAT(AnswersTo(R"({"jsonrpc":"2.0","method":"echo","id":[1]})"),
                ElementsAre(AllOf(HasSubstr("\"id\":null"), HasSubstr("the id must be"))));
}

TEST_F(RPCServerTest, AnswersNoNotification)
{
    Start();
    for (const char* method : {"echo", "nothing", "refuse", "fail", "forget", "huge", "rpc.announce"})
        EXPECT_THAT(AnswersTo(std::string(R"({"jsonrpc":"2.0","method":")") + method + "\"}"), IsEmpty());
    EXPECT_THAT(AnswersTo(R"({"jsonrpc":"2.0","method":"echo","id":1})").size(), 1u);
}

TEST_F(RPCServerTest, IgnoresReplies)
{
    Start();
    EXPECT_THAT(AnswersTo(R"({"jsonrpc":"2.0","id":1,"result":{}})"), IsEmpty());
    EXPECT_THAT(AnswersTo(R"({"jsonrpc":"2.0","id":1,"error":{"code":1,"message":""}})"), IsEmpty());
    EXPECT_TRUE(session->IsOpen());
    EXPECT_THAT(*traceLines, Contains(HasSubstr("Ignored a reply sent to a server")));
}

TEST_F(RPCServerTest, LearnsTheClientsName)
{
    Start();
    EXPECT_EQ(server->ClientName(), "");
    for (const char* params : {"[]", "[7]", "[\"a\",\"b\"]", "{\"name\":\"a\"}", "\"a\""})
        AnswersTo(std::string(R"({"jsonrpc":"2.0","method":"rpc.announce","params":)") + params + "}");
    EXPECT_EQ(server->ClientName(), "");
    EXPECT_THAT(*traceLines, Contains(HasSubstr("takes one string")));
    AnswersTo(R"({"jsonrpc":"2.0","method":"rpc.announce","params":["My client"]})");
    EXPECT_EQ(server->ClientName(), "My client");
}

TEST_F(RPCServerTest, AbortsForWhatIsNoJsonRpc)
{
    for (const std::string& frame :
         {std::string(), std::string("garbage"), std::string("7"), std::string("{}"),
          std::string(R"({"method":"echo","id":1})"), std::string(R"({"jsonrpc":"1.0","method":"echo"})"),
          std::string(R"({"jsonrpc":"2.0","method":"echo"} x)"),
          std::string(70, '[') + std::string(70, ']')}) {
        auto [nearEnd, farEnd] = zettransport::CreateMemoryStreamPair();
        const auto aborted = zettransport::Session::Create(nearEnd);
        const auto sender = zettransport::Session::Create(farEnd);
        EventLog events;
        aborted->SetCloseCallback([&](const auto&) {
            events.Add("closed");
            return 0;
        });
        RPCServer unfortunate(aborted);
        unfortunate.Start();
        sender->Send(frame);
        EXPECT_THAT(events.Await(1), ElementsAre("closed")) << frame;
    }
}

TEST_F(RPCServerTest, MayAnswerLaterFromAnotherThreadAndGoesOnMeanwhile)
{
    Start();
    EXPECT_THAT(AnswersTo(R"({"jsonrpc":"2.0","method":"keep","id":1})"), IsEmpty());
    EXPECT_THAT(AnswersTo(R"({"jsonrpc":"2.0","method":"echo","id":2})").size(), 1u);
    std::thread([this] { kept->Succeed(MakeValue(true)); }).join();
    EXPECT_THAT(peerLog.Await(2), Contains(R"({"jsonrpc":"2.0","id":1,"result":true})"));
}

TEST_F(RPCServerTest, AnswersOnceHoweverManyThreadsAnswer)
{
    Start();
    peer->Send(R"({"jsonrpc":"2.0","method":"keep","id":1})");
    log.Await(1);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([this, i] { kept->Succeed(MakeValue(static_cast<long long>(i))); });
    for (std::thread& thread : threads)
        thread.join();
    Settle();
    EXPECT_EQ(peerLog.Now().size(), 1u);
}

/// Holds requests back, as a plug-in does that hangs.
class RPCServerBacklogTest : public RPCServerTest
{
  protected:
    void StartHolding()
    {
        Start();
        server->Register("hold", [this](const Array&, const Responder& responder) {
            held.push_back(responder);
            log.Add("held");
        });
    }
    void SendHold(const std::string& params)
    {
        peer->Send(R"({"jsonrpc":"2.0","id":1,"method":"hold","params":[)" + params + "]}");
    }
    static std::string Zeros(std::size_t count)
    {
        std::string text = "0";
        for (std::size_t i = 1; i < count; ++i)
            text += ",0";
        return text;
    }

    std::vector<Responder> held;
};

TEST_F(RPCServerBacklogTest, GivesUpAClientThatSendsAndSendsWithoutWaitingForAnswers)
{
    StartHolding();
    const std::string large = '"' + std::string(std::size_t{12} << 20, 'x') + '"';
    for (int i = 0; i < 6; ++i)
        SendHold(large);
    // Five of them have 60 MiB. The sixth would be more than is kept.
    EXPECT_THAT(log.Await(6), ElementsAre("held", "held", "held", "held", "held", "closed"));
    // The other side notices the end on its own thread, and traces it.
    Settle();
    EXPECT_THAT(*traceLines, Contains(HasSubstr("does not wait for answers")));
}

TEST_F(RPCServerBacklogTest, CountsWhatManySmallValuesTakeInMemory)
{
    StartHolding();
    // Each has 100 kB of text and takes 5 MB of memory.
    const std::string small = Zeros(50000);
    for (int i = 0; i < 20; ++i)
        SendHold(small);
    const auto events = log.Await(14);
    EXPECT_EQ(std::count(events.begin(), events.end(), "held"), 13);
    EXPECT_EQ(events.back(), "closed");
}

TEST_F(RPCServerBacklogTest, DoesNotCountWhatHasBeenAnswered)
{
    StartHolding();
    const std::string large = '"' + std::string(std::size_t{12} << 20, 'x') + '"';
    for (std::size_t i = 0; i < 10; ++i) {
        SendHold(large);
        log.Await(i + 1);
        held.front()->Succeed(nullptr);
        held.clear();
    }
    EXPECT_TRUE(session->IsOpen());
}

TEST_F(RPCServerBacklogTest, TakesOneRequestOfAnySizeThatAFrameMayHave)
{
    StartHolding();
    SendHold(Zeros(900000));
    EXPECT_THAT(log.Await(1), ElementsAre("held"));
    SendHold("0");
    EXPECT_THAT(log.Await(2), ElementsAre("held", "closed"));
}

TEST_F(RPCServerTest, AResponderMayOutliveServerAndSession)
{
    Start();
    peer->Send(R"({"jsonrpc":"2.0","method":"keep","id":1})");
    log.Await(1);
    server.reset();
    session.reset();
    // The handler that is about to end holds the session too.
    Settle();
    kept->Succeed(nullptr);
    kept.reset();
    Settle();
    EXPECT_THAT(peerLog.Now(), IsEmpty());
}

TEST_F(RPCServerTest, MayBeDestroyedInItsMethod)
{
    Start();
    server->Register("destroy", [this](const Array&, const Responder& responder) {
        server.reset();
        responder->Succeed(MakeValue(Object()));
    });
    EXPECT_THAT(AnswersTo(R"({"jsonrpc":"2.0","method":"destroy","id":1})"),
                ElementsAre(R"({"jsonrpc":"2.0","id":1,"result":{}})"));
    EXPECT_THAT(AnswersTo(R"({"jsonrpc":"2.0","method":"echo","id":2})"), IsEmpty());
}

TEST_F(RPCServerTest, ClientAndServerTalkOverSockets)
{
    const auto serving = zettransport::SocketTransport::Create(1);
    const auto calling = zettransport::SocketTransport::Create(1);
    std::unique_ptr<RPCServer> accepted;
    const auto port =
        serving->ServerStart([&](const std::shared_ptr<zettransport::Session>& farEnd, const auto&) {
            accepted = std::make_unique<RPCServer>(farEnd);
            accepted->Register("echo", [](const Array& params, const Responder& responder) {
                responder->Succeed(params.at(0));
            });
            accepted->Start();
            return true;
        });
    const auto nearEnd = calling->ClientStart("127.0.0.1", port);
    ASSERT_TRUE(nearEnd);
    RPCClient client(nearEnd, L"ClientUnknown");
    std::atomic<int> left = 500;
    std::function<void()> next = [&] {
        const Call call = BuildCall("echo", MakeValue(Array{MakeValue(static_cast<long long>(left))}));
        client.SendRequest(
            call,
            [&](const ValuePtr& result, long long) {
                EXPECT_EQ(std::any_cast<long long>(*result), left);
                if (--left == 0)
                    log.Add("done");
                else
                    next();
            },
            [&](int, const std::wstring&, long long) { log.Add("failed"); });
    };
    next();
    EXPECT_THAT(log.Await(1), ElementsAre("done"));
    EXPECT_EQ(accepted->ClientName(), "ClientUnknown");
}

} // namespace

} // namespace zetmarshal
