#pragma once

#include <functional>
#include <memory>
#include <string>

#include <zetcore/serialization/Value.h>
#include <zetmarshal/Export.h>
#include <zettransport/Session.h>

namespace zetmarshal {

/// The calling side of JSON-RPC 2.0 over a session. Any thread.
///
/// The constructor starts the session and announces the client with the notification "rpc.announce" and
/// params [name].
///
/// For each request exactly one of its two handlers is called. Handlers run on the session's threads, one at
/// a time, and never inside `SendRequest`. When the client is destroyed or the session closes, they are
/// dropped uncalled.
///
/// The session is aborted, and its close callback called, when the conversation cannot go on: after an
/// exception that leaves a handler, a frame that is no JSON-RPC, a batch, a reply without exactly one of
/// result and error, and a reply to a request that was never sent. The reason is traced. A second reply to
/// the same request, and requests from the server, are traced and ignored.
class ZETMARSHAL_API RPCClient
{
  public:
    /// The number is the id of the request.
    using ResultHandler =
        std::function<void(const std::shared_ptr<zetcore::serialization::Value>& result, long long id)>;
    using ErrorHandler = std::function<void(int code, const std::wstring& message, long long id)>;

    RPCClient(std::shared_ptr<zettransport::Session> session, const std::wstring& clientName);
    ~RPCClient();
    RPCClient(const RPCClient&) = delete;
    RPCClient& operator=(const RPCClient&) = delete;

    /// Queues the request and returns at once. On a closed session neither handler is called. Throws
    /// `std::bad_any_cast` for arguments that are no serialised value, and `std::length_error` for a request
    /// that is nested too deep or larger than a frame may be. Nothing is sent then.
    void SendRequest(const zetcore::serialization::Call& call, ResultHandler onResult, ErrorHandler onError);

  private:
    struct State;
    std::shared_ptr<State> state;
};

} // namespace zetmarshal
