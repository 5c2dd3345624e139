#include "scan/ScanMessages.h"

#include <any>
#include <string>

#include <zetcore/string/Utf.h>
#include <zetscanprotocol/ScanProtocol.h>

namespace zetaudiopluginhostui {

namespace {

namespace protocol = zetscanprotocol;
namespace serialization = zetcore::serialization;
using serialization::ValuePtr;

ValuePtr MakeArray()
{
    return serialization::MakeValue(serialization::Array());
}

/// The standard error, which names nothing, with the name of what has the wrong type.
class WrongType : public std::bad_any_cast
{
  public:
    explicit WrongType(std::string_view field)
        : message("Bad any_cast: \"" + std::string(field) + "\" of GetScanInfo's reply has a wrong type")
    {}
    const char* what() const noexcept override { return message.c_str(); }

  private:
    std::string message;
};

/// What `value` holds; throws for any other type and for no value.
template<typename T>
const T& Expect(const ValuePtr& value, std::string_view field)
{
    try {
        serialization::AssertExpectedType(value, typeid(T));
    } catch (const std::bad_any_cast&) {
        throw WrongType(field);
    }
    return std::any_cast<const T&>(*value);
}

ValuePtr Field(const ValuePtr& record, std::string_view key)
{
    return serialization::GetVariantInObject(record, key);
}

std::wstring ReadString(const ValuePtr& record, std::string_view key)
{
    const ValuePtr value = Field(record, key);
    return zetcore::string::UTF8to16(
        serialization::ToStdString(Expect<serialization::Utf8String>(value, key)));
}

std::int32_t ReadInteger(const ValuePtr& record, std::string_view key)
{
    const ValuePtr value = Field(record, key);
    if (const auto* isSigned = std::any_cast<long long>(value.get()))
        return static_cast<std::int32_t>(*isSigned);
    return static_cast<std::int32_t>(Expect<unsigned long long>(value, key));
}

bool ReadLenientBoolean(const ValuePtr& record, std::string_view key)
{
    const ValuePtr value = Field(record, key);
    if (const auto* boolean = std::any_cast<bool>(value.get()))
        return *boolean;
    if (const auto* number = std::any_cast<int>(value.get()))
        return *number != 0;
    const std::string text = serialization::ToStdString(Expect<serialization::Utf8String>(value, key));
    if (text != "true" && text != "false")
        throw WrongType(key);
    return text == "true";
}

} // namespace

serialization::Call BuildConnect(const ConnectArguments& arguments)
{
    const ValuePtr array = MakeArray();
    for (const std::wstring& path : {arguments.pluginSettingsPath, arguments.bannedSettingsPath,
                                     arguments.permanentBannedSettingsPath, arguments.resultFilePath})
        serialization::AppendToArray(array, serialization::MakeString(path));
    serialization::AppendToArray(array, serialization::MakeValue(arguments.disableVST2ShellSkipping));
    serialization::AppendToArray(array, serialization::MakeValue(arguments.quickEffectScan));
    return serialization::BuildCall(protocol::connectMethod, array);
}

serialization::Call BuildBeginScanForPlugins(const std::vector<zetaudiofilterhost::PluginLocator>& locators)
{
    const ValuePtr texts = MakeArray();
    for (const auto& locator : locators)
        serialization::AppendToArray(texts, serialization::MakeString(locator.ToString()));
    const ValuePtr array = MakeArray();
    serialization::AppendToArray(array, texts);
    return serialization::BuildCall(protocol::beginScanMethod, array);
}

serialization::Call BuildGetScanInfo()
{
    return serialization::BuildCall(protocol::getScanInfoMethod, MakeArray());
}

serialization::Call BuildScanOneEntity()
{
    return serialization::BuildCall(protocol::scanOneEntityMethod, MakeArray());
}

ScanInfo ReadScanInfoReply(const ValuePtr& reply)
{
    Expect<serialization::Object>(reply, "result");
    const ValuePtr record = Field(reply, protocol::valueKey);
    Expect<serialization::Object>(record, protocol::valueKey);
    ScanInfo info;
    info.locator = ReadString(record, protocol::locatorKey);
    info.subcomponent = ReadString(record, protocol::subcomponentKey);
    info.progress = ReadInteger(record, protocol::progressKey);
    info.total = ReadInteger(record, protocol::totalKey);
    info.continues = ReadLenientBoolean(record, protocol::continueKey);
    return info;
}

} // namespace zetaudiopluginhostui
