#include "scan/ScanMessages.h"

#include <any>

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

/// The element with this key; never null.
ValuePtr Field(const ValuePtr& object, std::string_view key)
{
    ValuePtr value = serialization::GetVariantInObject(object, key);
    if (!value)
        throw std::bad_any_cast();
    return value;
}

std::wstring ReadString(const ValuePtr& object, std::string_view key)
{
    const ValuePtr value = Field(object, key);
    return zetcore::string::UTF8to16(
        serialization::ToStdString(std::any_cast<const serialization::Utf8String&>(*value)));
}

std::int32_t ReadInteger(const ValuePtr& object, std::string_view key)
{
    const ValuePtr value = Field(object, key);
    if (const auto* isSigned = std::any_cast<long long>(value.get()))
        return static_cast<std::int32_t>(*isSigned);
    return static_cast<std::int32_t>(std::any_cast<unsigned long long>(*value));
}

bool ReadLenientBoolean(const ValuePtr& object, std::string_view key)
{
    const ValuePtr value = Field(object, key);
    if (const auto* boolean = std::any_cast<bool>(value.get()))
        return *boolean;
    if (const auto* number = std::any_cast<int>(value.get()))
        return *number != 0;
    const std::string text =
        serialization::ToStdString(std::any_cast<const serialization::Utf8String&>(*value));
    if (text != "true" && text != "false")
        throw std::bad_any_cast();
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
    serialization::AssertExpectedType(reply, typeid(serialization::Object));
    const ValuePtr record = serialization::GetVariantInObject(reply, protocol::valueKey);
    ScanInfo info;
    info.locator = ReadString(record, protocol::locatorKey);
    info.subcomponent = ReadString(record, protocol::subcomponentKey);
    info.progress = ReadInteger(record, protocol::progressKey);
    info.total = ReadInteger(record, protocol::totalKey);
    info.continues = ReadLenientBoolean(record, protocol::continueKey);
    return info;
}

} // namespace zetaudiopluginhostui
