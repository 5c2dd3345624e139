#include <zetmarshal/RPCClient.h>

#include <atomic>
#include <limits>
#include <map>
#include <mutex>
#include <stdexcept>
#include <utility>

#include <zetcore/debug/Trace.h>
#include <zetcore/string/Utf.h>

#include "RPCMessage.h"
#include "TraceCategory.h"

namespace zetmarshal {

using namespace zetcore::serialization;
using zettransport::Session;

namespace {

void TraceIgnored(const std::string& what)
{
    zetcore::debug::TraceLine(3, traceCategory, "Ignored " + what);
}

struct ErrorReply
{
    int code = 0;
    std::wstring message;
};

/// Throws `std::runtime_error` when the value is no error object.
ErrorReply ParseError(const ValuePtr& value)
{
    const auto* object = std::any_cast<Object>(value.get());
    const auto member = [&](std::string_view key) -> const Value* {
        if (!object)
            return nullptr;
        const auto found = object->find(ToUtf8String(key));
        return found == object->end() ? nullptr : found->second.get();
    };
    const auto* code = std::any_cast<long long>(member("code"));
    const auto* message = std::any_cast<Utf8String>(member("message"));
    if (!code || !message || *code < std::numeric_limits<int>::min() ||
        *code > std::numeric_limits<int>::max())
        throw std::runtime_error("an error reply without a code and a message");
    return {static_cast<int>(*code), zetcore::string::UTF8to16(ToStdString(*message))};
}

} // namespace

struct RPCClient::State
{
    struct Pending
    {
        ResultHandler onResult;
        ErrorHandler onError;
    };

    explicit State(std::shared_ptr<Session> rpcSession) : session(std::move(rpcSession)) {}

    void OnFrame(const std::string& frame);
    void OnReply(const RPCMessage& message);
    /// Takes the request's handlers. Empty when there is no such request, or when it has been taken already.
    std::map<long long, Pending>::node_type Take(long long id);
    /// Drops all handlers, and takes no new ones.
    void DropPending();

    const std::shared_ptr<Session> session;
    std::atomic<long long> lastId = 0;
    std::mutex mutex;
    bool dropped = false;
    std::map<long long, Pending> pending;
};

namespace {

/// Runs a call when it is destroyed. The session destroys its frame handler when it closes, whichever side
/// closes it, so that this tells the end.
class OnDestruction
{
  public:
    explicit OnDestruction(std::function<void()> destructionCall) : call(std::move(destructionCall)) {}
    ~OnDestruction() { call(); }
    OnDestruction(const OnDestruction&) = delete;
    OnDestruction& operator=(const OnDestruction&) = delete;

  private:
    std::function<void()> call;
};

} // namespace

RPCClient::RPCClient(std::shared_ptr<Session> session, const std::wstring& clientName)
    : state(std::make_shared<State>(std::move(session)))
{
    // The state owns the session, so the session must not own the state.
    const std::weak_ptr<State> weak = state;
    const auto guard = std::make_shared<OnDestruction>([weak] {
        if (const auto current = weak.lock())
            current->DropPending();
    });
    state->session->Start([weak, guard](const std::string& frame) {
        if (const auto current = weak.lock())
            current->OnFrame(frame);
    });
    const ValuePtr arguments = MakeValue(Array{MakeString(std::wstring_view(clientName))});
    state->session->Send(NotificationText(announceMethod, arguments));
}

RPCClient::~RPCClient()
{
    state->DropPending();
}

void RPCClient::SendRequest(const Call& call, ResultHandler onResult, ErrorHandler onError)
{
    const long long id = ++state->lastId;
    const std::string text = RequestText(id, call.method, call.arguments);
    if (text.size() > Session::maxFrameBytes)
        throw std::length_error("the request \"" + call.method + "\" is larger than a frame may be");
    {
        const std::lock_guard lock(state->mutex);
        if (state->dropped)
            return;
        state->pending.emplace(id, State::Pending{std::move(onResult), std::move(onError)});
    }
    if (!state->session->Send(text))
        state->Take(id);
}

void RPCClient::State::DropPending()
{
    std::map<long long, Pending> gone;
    const std::lock_guard lock(mutex);
    dropped = true;
    gone.swap(pending);
}

std::map<long long, RPCClient::State::Pending>::node_type RPCClient::State::Take(long long id)
{
    const std::lock_guard lock(mutex);
    return pending.extract(id);
}

void RPCClient::State::OnFrame(const std::string& frame)
{
    const RPCMessage message = ParseMessage(frame);
    if (message.isBatch)
        throw std::runtime_error("a batch, which nobody asked for");
    if (message.method)
        TraceIgnored("a request or notification sent to a client");
    else
        OnReply(message);
}

void RPCClient::State::OnReply(const RPCMessage& message)
{
    if ((message.result != nullptr) == (message.error != nullptr))
        throw std::runtime_error("a reply must have either a result or an error");
    const ErrorReply error = message.error ? ParseError(message.error) : ErrorReply{};
    const auto* id = message.id ? std::any_cast<long long>(message.id.get()) : nullptr;
    if (!id || *id < 1 || *id > lastId) {
        // A caller waits for the answer that this reply should have been, and would wait for ever.
        throw std::runtime_error(
            "a reply to a request that was never sent" +
            (message.error ? ": " + zetcore::string::UTF16to8(error.message) : std::string()));
    }
    const auto request = Take(*id);
    if (!request) {
        TraceIgnored("a reply to a request that is not pending any more");
        return;
    }
    const Pending& handlers = request.mapped();
    if (message.result && handlers.onResult)
        handlers.onResult(message.result, *id);
    else if (message.error && handlers.onError)
        handlers.onError(error.code, error.message, *id);
}

} // namespace zetmarshal
