#pragma once

#include <memory>
#include <mutex>

#include <zettransport/SocketTransport.h>

#include "scan/session/ScannerConnection.h"

namespace zetaudiopluginhostui {

/// The scanner's protocol over a socket.
class SocketConnection : public ScannerConnection
{
  public:
    bool Open(std::uint16_t port) override;
    void SetCloseCallback(zettransport::Session::CloseCallback callback) override;
    void Send(const zetcore::serialization::Call& call, zetmarshal::RPCClient::ResultHandler onResult,
              zetmarshal::RPCClient::ErrorHandler onError) override;
    void Close() override;

  private:
    /// Replaces one of the pointers. The old object is dropped without the lock, because it may wait for
    /// handlers.
    template<typename T>
    void Replace(std::shared_ptr<T>& stored, std::shared_ptr<T> with);

    /// Guards only the pointers, which the main thread replaces while the transport's threads send. No other
    /// code is called while it is held.
    std::mutex mutex;
    std::shared_ptr<zettransport::SocketTransport> transport;
    std::shared_ptr<zettransport::Session> session;
    std::shared_ptr<zetmarshal::RPCClient> client;
};

} // namespace zetaudiopluginhostui
