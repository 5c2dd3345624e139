#pragma once

#include <cstdint>

#include <zetmarshal/RPCClient.h>
#include <zettransport/Session.h>

namespace zetaudiopluginhostui {

/// The connection with one scanner at a time. `Send` may be called by any thread, the others by the main
/// thread. No handler is called inside an operation.
class ScannerConnection
{
  public:
    ScannerConnection() = default;
    virtual ~ScannerConnection() = default;
    ScannerConnection(const ScannerConnection&) = delete;
    ScannerConnection& operator=(const ScannerConnection&) = delete;

    /// Connects to the port on this machine; an older connection is dropped. False when nobody answers there.
    virtual bool Open(std::uint16_t port) = 0;
    /// Of the connection that is open: called once, on another thread, when the scanner closes it.
    virtual void SetCloseCallback(zettransport::Session::CloseCallback callback) = 0;
    /// Queues the request; nothing happens without a connection.
    virtual void Send(const zetcore::serialization::Call& call, zetmarshal::RPCClient::ResultHandler onResult,
                      zetmarshal::RPCClient::ErrorHandler onError) = 0;
    /// Closes it and returns when no handler runs any more. The close callback is not called.
    virtual void Close() = 0;
};

} // namespace zetaudiopluginhostui
