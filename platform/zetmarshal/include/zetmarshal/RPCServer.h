#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include <zetcore/serialization/Value.h>
#include <zetmarshal/Export.h>
#include <zettransport/Session.h>

namespace zetmarshal {

/// JSON-RPC 2.0's own codes, and ours from -32000 down.
enum class RPCErrorCode : int
{
    ParseError = -32700,
    InvalidRequest = -32600,
    MethodNotFound = -32601,
    InvalidParams = -32602,
    InternalError = -32603,
    /// The request is a good one at another time.
    OutOfOrder = -32000,
    /// The request could not be carried out.
    Failed = -32001,
};

/// Thrown by a method to answer with an error reply.
class ZETMARSHAL_API RPCError : public std::runtime_error
{
  public:
    RPCError(RPCErrorCode code, const std::string& message);
    ~RPCError() override;
    RPCErrorCode Code() const noexcept { return code; }

  private:
    RPCErrorCode code;
};

/// Answers one request, once, from any thread; later calls do nothing. A responder that is dropped unanswered
/// answers with an internal error. Notifications have one too; it sends nothing.
class ZETMARSHAL_API RPCResponder
{
  public:
    virtual ~RPCResponder();
    virtual void Succeed(zetcore::serialization::ValuePtr result) = 0;
    virtual void Fail(RPCErrorCode code, const std::string& message) = 0;
};

/// The answering side of JSON-RPC 2.0 over a session. Register the methods, then `Start`. The server owns the
/// session; requests that arrive after the server's destruction are ignored.
///
/// It answers by itself: `MethodNotFound` for an unknown method, `InvalidParams` for parameters that are not
/// an array (absent ones are an empty array), `InvalidRequest` for a batch and for a method or id of a wrong
/// type. Notifications get no reply. "rpc.announce" with params [name] sets the client's name; another shape
/// is traced and ignored. A reply that is sent to the server is traced and ignored. What is no JSON-RPC at
/// all aborts the session, and so does a client that sends more requests than `maxUnansweredBytes` while
/// earlier ones are not answered.
class ZETMARSHAL_API RPCServer
{
  public:
    /// The unanswered requests may take up so much memory together; the replies that wait to be sent may do
    /// the same. A single one is always taken.
    static constexpr std::size_t maxUnansweredBytes = std::size_t{64} << 20;

    /// Runs on the session's threads, one at a time. May answer later. An `RPCError` it throws becomes its
    /// error reply, any other exception an internal error with its message.
    using Method = std::function<void(const zetcore::serialization::Array& params,
                                      std::shared_ptr<RPCResponder> responder)>;

    explicit RPCServer(std::shared_ptr<zettransport::Session> session);
    ~RPCServer();
    RPCServer(const RPCServer&) = delete;
    RPCServer& operator=(const RPCServer&) = delete;

    void Register(const std::string& name, Method method);
    void Start();
    /// The name that the client announced; empty when it did not.
    std::string ClientName() const;

  private:
    struct State;
    std::shared_ptr<State> state;
};

} // namespace zetmarshal
