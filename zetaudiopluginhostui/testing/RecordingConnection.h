#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <zetmarshal/JsonValue.h>

#include "scan/session/ScannerConnection.h"

namespace zetaudiopluginhostui {

/// A connection without a scanner. It tells how it is used, and the test answers the requests.
class RecordingConnection : public ScannerConnection
{
  public:
    struct Request
    {
        std::string method;
        /// The arguments as JSON.
        std::string arguments;
        zetmarshal::RPCClient::ResultHandler onResult;
        zetmarshal::RPCClient::ErrorHandler onError;
    };

    explicit RecordingConnection(std::function<void(const std::string&)> noteStep) : note(std::move(noteStep))
    {}

    bool Open(std::uint16_t port) override
    {
        note("open " + std::to_string(port));
        return answers;
    }
    void SetCloseCallback(zettransport::Session::CloseCallback callback) override
    {
        note("register");
        onClosed = std::move(callback);
    }
    void Send(const zetcore::serialization::Call& call, zetmarshal::RPCClient::ResultHandler onResult,
              zetmarshal::RPCClient::ErrorHandler onError) override
    {
        const std::string method = call.method.substr(call.method.rfind('.') + 1);
        note("send " + method);
        if (onSend)
            onSend(method);
        requests.push_back(
            {method, zetmarshal::ToJson(call.arguments), std::move(onResult), std::move(onError)});
    }
    void Close() override
    {
        note("close");
        if (onClose)
            onClose();
    }

    /// The newest request. When there is none, the test fails and an empty request is returned.
    Request Last() const
    {
        if (!requests.empty())
            return requests.back();
        ADD_FAILURE() << "nothing was sent";
        return {"none", "", [](auto&&...) {}, [](auto&&...) {}};
    }
    /// Calls the close callback, as the transport does when the scanner is gone.
    zettransport::TransportError LoseScanner() const
    {
        if (onClosed)
            return onClosed(nullptr);
        ADD_FAILURE() << "nobody wants to know that the scanner is gone";
        return -1;
    }

    bool answers = true;
    std::function<void(const std::string& method)> onSend;
    std::function<void()> onClose;
    std::vector<Request> requests;

  private:
    const std::function<void(const std::string&)> note;
    zettransport::Session::CloseCallback onClosed;
};

} // namespace zetaudiopluginhostui
