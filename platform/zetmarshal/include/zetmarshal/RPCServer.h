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

/// The codes of JSON-RPC 2.0, and ours, which go from -32000 down.
enum class RPCErrorCode : int
{
    ParseError = -32700,
    InvalidRequest = -32600,
    MethodNotFound = -32601,
    InvalidParams = -32602,
    InternalError = -32603,
    /// The request is a good one, but not at this time.
    OutOfOrder = -32000,
    /// The request could not be carried out.
    Failed = -32001,
};

/// A method throws this to answer with an error reply.
class ZETMARSHAL_API RPCError : public std::runtime_error
{
  public:
    RPCError(RPCErrorCode code, const std::string& message);
    ~RPCError() override;
    RPCErrorCode Code() const noexcept { return code; }

  private:
    RPCErrorCode code;
};

/// Answers one request, once. Later calls do nothing. When a responder is destroyed without an answer, it
/// answers with an internal error. A notification has a responder too, which sends nothing. Any thread.
class ZETMARSHAL_API RPCResponder
{
  public:
    virtual ~RPCResponder();
    virtual void Succeed(zetcore::serialization::ValuePtr result) = 0;
    virtual void Fail(RPCErrorCode code, const std::string& message) = 0;
};

/// The answering side of JSON-RPC 2.0 over a session. Register the methods, then `Start`. The server owns the
/// session. Requests that arrive after the server's destruction are ignored.
///
/// The server itself answers `MethodNotFound` for an unknown method, `InvalidParams` for parameters that are
/// not an array (absent ones are an empty array), and `InvalidRequest` for a batch and for a method or id of
/// a wrong type. Notifications get no reply. "rpc.announce" with params [name] sets the client's name. When
/// it has another shape, and when a reply is sent to the server, this is traced and ignored.
///
/// The session is aborted when a frame is no JSON-RPC at all, and when the client sends more requests than
/// `maxUnansweredBytes` while earlier ones are not answered.
class ZETMARSHAL_API RPCServer
{
  public:
    /// The unanswered requests may take up so much memory together, and the replies that wait to be sent may
    /// do the same. A single one is always taken.
    static constexpr std::size_t maxUnansweredBytes = std::size_t{64} << 20;

    /// Runs on the session's threads, one at a time. It may answer later. An `RPCError` that it throws
    /// becomes its error reply, and any other exception an internal error with its message.
    using Method = std::function<void(const zetcore::serialization::Array& params,
                                      std::shared_ptr<RPCResponder> responder)>;

    explicit RPCServer(std::shared_ptr<zettransport::Session> session);
    ~RPCServer();
    RPCServer(const RPCServer&) = delete;
    RPCServer& operator=(const RPCServer&) = delete;

    void Register(const std::string& name, Method method);
    void Start();
    /// Returns the name that the client has announced, or an empty text before that.
    std::string ClientName() const;

  private:
    struct State;
    std::shared_ptr<State> state;
};

} // namespace zetmarshal
