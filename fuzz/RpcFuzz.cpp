// Reads JSON-RPC messages in both directions. Each line of the input is a message; the server and the client
// get all of them.
#include <map>
#include <string>
#include <vector>

#include <zetcore/debug/Trace.h>
#include <zetmarshal/JsonValue.h>
#include <zetmarshal/RPCClient.h>
#include <zetmarshal/RPCServer.h>
#include <zettransport/Session.h>

#include "FuzzTarget.h"
#include "InputStream.h"

namespace {

using namespace zetcore::serialization;
using zetfuzz::InputStream;
using zetfuzz::Require;

std::string Frame(std::string_view payload)
{
    return "Content-Length: " + std::to_string(payload.size()) + "\r\n\r\n" + std::string(payload);
}

std::vector<std::string> Frames(const std::string& bytes)
{
    std::vector<std::string> frames;
    const auto stream = std::make_shared<InputStream>();
    const auto session = zettransport::Session::Create(stream);
    session->Start([&frames](std::string frame) { frames.push_back(std::move(frame)); });
    stream->Put(bytes);
    stream->Run();
    Require(!stream->closed, "what a server or client writes is frames");
    return frames;
}

const Value* Member(const ValuePtr& object, std::string_view key)
{
    const auto* members = std::any_cast<Object>(object.get());
    Require(members, "a message is an object");
    const auto found = members->find(ToUtf8String(key));
    return found == members->end() ? nullptr : found->second.get();
}

void CheckServer(const std::vector<std::string_view>& lines)
{
    const auto stream = std::make_shared<InputStream>();
    zetmarshal::RPCServer server(zettransport::Session::Create(stream));
    std::size_t calls = 0;
    server.Register("echo", [&calls](const Array& params, const auto& responder) {
        ++calls;
        responder->Succeed(MakeValue(params));
        responder->Succeed(MakeString("once only"));
    });
    server.Register("fail", [&calls](const Array&, const auto&) {
        ++calls;
        throw zetmarshal::RPCError(zetmarshal::RPCErrorCode::Failed, "as asked");
    });
    server.Register("drop", [&calls](const Array&, const auto&) { ++calls; });
    server.Register("first", [&calls](const Array& params, const auto& responder) {
        ++calls;
        responder->Succeed(params.at(0));
    });
    server.Start();
    for (const std::string_view line : lines)
        stream->Put(Frame(line));
    stream->Run();

    const std::vector<std::string> replies = Frames(stream->written);
    Require(replies.size() <= lines.size(), "at most one reply to a message");
    Require(calls <= lines.size(), "at most one call for a message");
    for (const std::string& reply : replies) {
        const ValuePtr value = zetmarshal::FromJson(reply);
        Require(Member(value, "jsonrpc") && Member(value, "id"), "a reply has a version and an id", reply);
        Require((Member(value, "result") != nullptr) != (Member(value, "error") != nullptr),
                "a reply has either a result or an error", reply);
    }
}

void CheckClient(const std::vector<std::string_view>& lines)
{
    constexpr long long requests = 4;
    const auto stream = std::make_shared<InputStream>();
    zetmarshal::RPCClient client(zettransport::Session::Create(stream), L"fuzz");
    std::map<long long, int> answered;
    bool threw = false;
    for (long long i = 0; i < requests; ++i)
        client.SendRequest(
            BuildCall("ask", MakeValue(Array())),
            [&](const ValuePtr& result, long long id) {
                Require(result != nullptr, "a result is a value");
                Require(++answered[id] == 1, "a request is answered once");
                if (id == requests) {
                    threw = true;
                    throw std::runtime_error("a handler that throws");
                }
            },
            [&](int, const std::wstring&, long long id) {
                Require(++answered[id] == 1, "a request is answered once");
            });
    Require(Frames(stream->written).size() == requests + 1, "the announcement and each request is a frame");
    for (const std::string_view line : lines)
        stream->Put(Frame(line));
    stream->Run();
    Require(answered.size() <= requests, "no other than the requests is answered");
    for (const auto& [id, count] : answered)
        Require(id >= 1 && id <= requests, "the id is one that was sent");
    Require(!threw || stream->closed, "a handler that throws ends the session");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view text = zetfuzz::Text(data, size);
    std::vector<std::string_view> lines;
    while (!text.empty())
        lines.push_back(zetfuzz::TakeLine(text));
    zetcore::debug::SetMasterTraceVolume(9);
    zetcore::debug::SetTraceSink([](auto&&...) {});
    CheckServer(lines);
    CheckClient(lines);
    return 0;
}
