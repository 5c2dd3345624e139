#pragma once

#include <string>
#include <string_view>

#include <zetcore/serialization/Value.h>
#include <zetmarshal/RPCServer.h>

/// JSON-RPC 2.0 messages as text and back.
namespace zetmarshal {

inline constexpr char announceMethod[] = "rpc.announce";

/// The members of a message as they came. A pointer is null when its member is absent.
struct RPCMessage
{
    /// True for an array of messages. The rest is empty then.
    bool isBatch = false;
    zetcore::serialization::ValuePtr id;
    zetcore::serialization::ValuePtr method;
    zetcore::serialization::ValuePtr params;
    zetcore::serialization::ValuePtr result;
    zetcore::serialization::ValuePtr error;
};

/// Throws `std::runtime_error` for a frame that is not JSON-RPC 2.0 at all: no JSON, neither object nor
/// array, or another version.
RPCMessage ParseMessage(std::string_view frame);

/// These throw as `ToJson` does.
std::string RequestText(long long id, std::string_view method,
                        const zetcore::serialization::ValuePtr& arguments);
std::string NotificationText(std::string_view method, const zetcore::serialization::ValuePtr& arguments);
std::string ResultText(const zetcore::serialization::ValuePtr& id,
                       const zetcore::serialization::ValuePtr& result);
/// A null pointer as the id stands for JSON's null.
std::string ErrorText(const zetcore::serialization::ValuePtr& id, RPCErrorCode code,
                      std::string_view message);

} // namespace zetmarshal
