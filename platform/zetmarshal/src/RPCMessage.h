#pragma once

#include <string>
#include <string_view>

#include <zetcore/serialization/Value.h>
#include <zetmarshal/RPCServer.h>

/// JSON-RPC 2.0 messages as text and back.
namespace zetmarshal {

inline constexpr char announceMethod[] = "rpc.announce";

/// A message's members, as they came; null pointers for those that are absent.
struct RPCMessage
{
    /// An array of messages; then the rest is empty.
    bool isBatch = false;
    zetcore::serialization::ValuePtr id;
    zetcore::serialization::ValuePtr method;
    zetcore::serialization::ValuePtr params;
    zetcore::serialization::ValuePtr result;
    zetcore::serialization::ValuePtr error;
};

/// Throws `std::runtime_error` for what is not JSON-RPC 2.0 at all: no JSON, neither object nor array,
/// another version.
RPCMessage ParseMessage(std::string_view frame);

/// These throw as `ToJson`.
std::string RequestText(long long id, std::string_view method,
                        const zetcore::serialization::ValuePtr& arguments);
std::string NotificationText(std::string_view method, const zetcore::serialization::ValuePtr& arguments);
std::string ResultText(const zetcore::serialization::ValuePtr& id,
                       const zetcore::serialization::ValuePtr& result);
/// A null pointer as id is JSON's null.
std::string ErrorText(const zetcore::serialization::ValuePtr& id, RPCErrorCode code,
                      std::string_view message);

} // namespace zetmarshal
