#include "RPCMessage.h"

#include <stdexcept>

#include <zetmarshal/JsonValue.h>

#include "JsonWriter.h"

namespace zetmarshal {

using namespace zetcore::serialization;

namespace {

constexpr char opening[] = "{\"jsonrpc\":\"2.0\"";
/// The message itself is one level around the values in it.
constexpr std::size_t messageDepth = 1;

ValuePtr Member(const Object& object, std::string_view key)
{
    const auto found = object.find(ToUtf8String(key));
    return found == object.end() ? nullptr : found->second;
}

void AppendMember(std::string& text, std::string_view key, const ValuePtr& value)
{
    text += ",\"";
    text += key;
    text += "\":";
    AppendJson(text, value, messageDepth);
}

void AppendMethod(std::string& text, std::string_view method, const ValuePtr& arguments)
{
    text += ",\"method\":";
    AppendJsonString(text, method);
    AppendMember(text, "params", arguments);
    text += '}';
}

} // namespace

RPCMessage ParseMessage(std::string_view frame)
{
    const ValuePtr value = FromJson(frame);
    RPCMessage message;
    if (value->type() == typeid(Array)) {
        message.isBatch = true;
        return message;
    }
    const auto* object = std::any_cast<Object>(value.get());
    if (!object)
        throw std::runtime_error("this is no JSON-RPC message: neither an object nor an array");
    const ValuePtr version = Member(*object, "jsonrpc");
    const auto* versionText = version ? std::any_cast<Utf8String>(version.get()) : nullptr;
    if (!versionText || *versionText != ToUtf8String("2.0"))
        throw std::runtime_error("this is no JSON-RPC message: \"jsonrpc\" is not \"2.0\"");
    message.id = Member(*object, "id");
    message.method = Member(*object, "method");
    message.params = Member(*object, "params");
    message.result = Member(*object, "result");
    message.error = Member(*object, "error");
    return message;
}

std::string RequestText(long long id, std::string_view method, const ValuePtr& arguments)
{
    std::string text = opening;
    text += ",\"id\":" + std::to_string(id);
    AppendMethod(text, method, arguments);
    return text;
}

std::string NotificationText(std::string_view method, const ValuePtr& arguments)
{
    std::string text = opening;
    AppendMethod(text, method, arguments);
    return text;
}

std::string ResultText(const ValuePtr& id, const ValuePtr& result)
{
    std::string text = opening;
    AppendMember(text, "id", id);
    AppendMember(text, "result", result);
    text += '}';
    return text;
}

std::string ErrorText(const ValuePtr& id, RPCErrorCode code, std::string_view message)
{
    std::string text = opening;
    AppendMember(text, "id", id);
    text += ",\"error\":{\"code\":" + std::to_string(static_cast<int>(code)) + ",\"message\":";
    AppendJsonString(text, message);
    text += "}}";
    return text;
}

} // namespace zetmarshal
