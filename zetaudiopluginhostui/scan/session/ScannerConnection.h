#pragma once

#include <cstdint>

#include <zetmarshal/RPCClient.h>
#include <zettransport/Session.h>

namespace zetaudiopluginhostui {

/// The connection with one scanner at a time. Any thread may call `Send`. The other operations are for the
/// main thread. No operation calls a handler itself.
class ScannerConnection
{
  public:
    ScannerConnection() = default;
    virtual ~ScannerConnection() = default;
    ScannerConnection(const ScannerConnection&) = delete;
    ScannerConnection& operator=(const ScannerConnection&) = delete;

    /// Drops an older connection and connects to the port on this machine. False when nobody answers there.
    virtual bool Open(std::uint16_t port) = 0;
    /// The callback is called once, on another thread, when the scanner closes the connection that is open.
    virtual void SetCloseCallback(zettransport::Session::CloseCallback callback) = 0;
    /// Queues the request. Without a connection nothing happens.
    virtual void Send(const zetcore::serialization::Call& call, zetmarshal::RPCClient::ResultHandler onResult,
                      zetmarshal::RPCClient::ErrorHandler onError) = 0;
    /// Closes the connection and returns when no handler runs any more. The close callback is not called.
    virtual void Close() = 0;
};

} // namespace zetaudiopluginhostui
