#include <zetmarshal/RPCServer.h>

#include <atomic>
#include <map>
#include <mutex>
#include <stdexcept>
#include <utility>

#include <zetcore/debug/Trace.h>

#include "RPCMessage.h"
#include "TraceCategory.h"

namespace zetmarshal {

using namespace zetcore::serialization;
using zettransport::Session;

namespace {

bool IsGoodId(const Value& id)
{
    return !id.has_value() || id.type() == typeid(long long) || id.type() == typeid(unsigned long long) ||
           id.type() == typeid(double) || id.type() == typeid(Utf8String);
}

/// Quotes a name for an error message, which a long name would drown.
std::string Quoted(const std::string& name)
{
    constexpr std::size_t shown = 200;
    return "\"" + (name.size() > shown ? name.substr(0, shown) + "..." : name) + "\"";
}

/// A parsed value takes so many bytes of memory, beside its text.
constexpr std::size_t bytesOfValue = 100;

std::size_t CountValues(const ValuePtr& value)
{
    std::size_t count = 1;
    if (const auto* array = std::any_cast<Array>(value.get())) {
        for (const ValuePtr& element : *array)
            count += CountValues(element);
    } else if (const auto* object = std::any_cast<Object>(value.get())) {
        for (const auto& [key, member] : *object)
            count += CountValues(member);
    }
    return count;
}

/// The number of bytes that unanswered requests take up.
using Backlog = std::atomic<std::size_t>;

class Responder final : public RPCResponder
{
  public:
    /// A null id stands for a notification. `requestBytes` have been added to the backlog.
    Responder(const std::shared_ptr<Session>& rpcSession, ValuePtr requestId,
              std::shared_ptr<Backlog> requestBacklog, std::size_t requestBytes)
        : session(rpcSession), id(std::move(requestId)), backlog(std::move(requestBacklog)),
          bytes(requestBytes)
    {}

    ~Responder() override
    {
        *backlog -= bytes;
        try {
            if (id)
                Fail(RPCErrorCode::InternalError, "the request was not answered");
        } catch (const std::exception& error) {
            zetcore::debug::TraceLine(1, traceCategory,
                                      std::string("Cannot answer a request: ") + error.what());
        }
    }

    void Succeed(ValuePtr result) override
    {
        if (answered.exchange(true))
            return;
        try {
            if (id)
                Reply(ResultText(id, result));
        } catch (const std::exception& error) {
            ReplyError(RPCErrorCode::InternalError,
                       std::string("the result cannot be sent: ") + error.what());
        }
    }

    void Fail(RPCErrorCode code, const std::string& message) override
    {
        if (!answered.exchange(true))
            ReplyError(code, message);
    }

  private:
    void ReplyError(RPCErrorCode code, const std::string& message)
    {
        zetcore::debug::TraceLine(3, traceCategory, "Request failed: " + message);
        if (id)
            Reply(ErrorText(id, code, message));
    }

    void Reply(const std::string& text)
    {
        const auto current = session.lock();
        if (!current || current->Send(text) || !current->IsOpen())
            return;
        const std::string instead =
            ErrorText(id, RPCErrorCode::InternalError, "the reply is larger than a frame may be");
        if (!current->Send(instead))
            current->Abort("a request whose reply is larger than a frame may be");
    }

    const std::weak_ptr<Session> session;
    const ValuePtr id;
    const std::shared_ptr<Backlog> backlog;
    const std::size_t bytes;
    std::atomic<bool> answered = false;
};

} // namespace

RPCError::RPCError(RPCErrorCode errorCode, const std::string& message)
    : std::runtime_error(message), code(errorCode)
{}

RPCError::~RPCError() = default;

RPCResponder::~RPCResponder() = default;

struct RPCServer::State
{
    explicit State(std::shared_ptr<Session> rpcSession) : session(std::move(rpcSession)) {}

    void OnFrame(const std::string& frame);
    std::shared_ptr<RPCResponder> MakeResponder(const RPCMessage& message, std::size_t frameBytes);
    void OnRequest(const RPCMessage& message, const std::shared_ptr<RPCResponder>& responder);
    void OnAnnounce(const Array& params, RPCResponder& responder);
    void RefuseWhole(const std::string& message) const;

    const std::shared_ptr<Session> session;
    /// The responders share it, because they may outlive the server.
    const std::shared_ptr<Backlog> backlog = std::make_shared<Backlog>(0);
    mutable std::mutex mutex;
    std::map<std::string, std::shared_ptr<const Method>, std::less<>> methods;
    std::string clientName;
};

RPCServer::RPCServer(std::shared_ptr<Session> session) : state(std::make_shared<State>(std::move(session))) {}

RPCServer::~RPCServer() = default;

void RPCServer::Register(const std::string& name, Method method)
{
    const std::lock_guard lock(state->mutex);
    state->methods[name] = std::make_shared<const Method>(std::move(method));
}

void RPCServer::Start()
{
    // The state owns the session, so the session must not own the state.
    state->session->Start([weak = std::weak_ptr(state)](const std::string& frame) {
        if (const auto current = weak.lock())
            current->OnFrame(frame);
    });
}

std::string RPCServer::ClientName() const
{
    const std::lock_guard lock(state->mutex);
    return state->clientName;
}

/// Answers a frame when nobody can tell which request it was, or whether it was one.
void RPCServer::State::RefuseWhole(const std::string& message) const
{
    session->Send(ErrorText(nullptr, RPCErrorCode::InvalidRequest, message));
}

void RPCServer::State::OnFrame(const std::string& frame)
{
    const RPCMessage message = ParseMessage(frame);
    if (message.isBatch)
        RefuseWhole("batches are not supported");
    else if (!message.method && (message.result || message.error))
        zetcore::debug::TraceLine(3, traceCategory, "Ignored a reply sent to a server");
    else if (message.id && !IsGoodId(*message.id))
        RefuseWhole("the id must be a number, a string or null");
    else
        OnRequest(message, MakeResponder(message, frame.size()));
}

/// Throws when too many requests wait already. The first one is taken whatever its size, because a frame has
/// its own limit.
std::shared_ptr<RPCResponder> RPCServer::State::MakeResponder(const RPCMessage& message,
                                                              std::size_t frameBytes)
{
    const std::size_t bytes = frameBytes + bytesOfValue * CountValues(message.params);
    const std::size_t waiting = backlog->load();
    if (waiting > 0 && waiting + bytes > maxUnansweredBytes)
        throw std::runtime_error("the other side asks and asks, and does not wait for answers");
    *backlog += bytes;
    return std::make_shared<Responder>(session, message.id, backlog, bytes);
}

void RPCServer::State::OnRequest(const RPCMessage& message, const std::shared_ptr<RPCResponder>& responder)
{
    const auto* name = message.method ? std::any_cast<Utf8String>(message.method.get()) : nullptr;
    if (!name)
        return responder->Fail(RPCErrorCode::InvalidRequest, "the method must be a string");
    const std::string method = ToStdString(*name);
    const ValuePtr params = message.params ? message.params : MakeValue(Array());
    const auto* arguments = std::any_cast<Array>(params.get());
    if (!arguments)
        return responder->Fail(RPCErrorCode::InvalidParams,
                               "the parameters of " + Quoted(method) + " must be an array");
    if (method == announceMethod)
        return OnAnnounce(*arguments, *responder);
    std::shared_ptr<const Method> handler;
    {
        const std::lock_guard lock(mutex);
        if (const auto found = methods.find(method); found != methods.end())
            handler = found->second;
    }
    if (!handler)
        return responder->Fail(RPCErrorCode::MethodNotFound, "there is no method " + Quoted(method));
    try {
        (*handler)(*arguments, responder);
    } catch (const RPCError& error) {
        responder->Fail(error.Code(), error.what());
    } catch (const std::exception& error) {
        responder->Fail(RPCErrorCode::InternalError, error.what());
    }
}

void RPCServer::State::OnAnnounce(const Array& params, RPCResponder& responder)
{
    const auto* name = params.size() == 1 && params[0] ? std::any_cast<Utf8String>(params[0].get()) : nullptr;
    if (!name)
        return responder.Fail(RPCErrorCode::InvalidParams,
                              "\"rpc.announce\" takes one string, the client's name");
    {
        const std::lock_guard lock(mutex);
        clientName = ToStdString(*name);
    }
    responder.Succeed(MakeValue(Object()));
}

} // namespace zetmarshal
