#include <zetscanprotocol/ScanInfo.h>

#include <any>
#include <string_view>

#include <zetcore/string/Utf.h>

#include "WireValues.h"

namespace zetscanprotocol {

namespace {

namespace serialization = zetcore::serialization;
using serialization::Object;
using serialization::ValuePtr;
using zetaudiofilterhost::PluginLocator;

constexpr char valueKey[] = "value";

/// The record's fields in the order in which they are read. Writing and reading both go through it.
template<typename Info, typename Visit>
void VisitFields(Info& info, Visit&& visit)
{
    visit("locator", info.locator);
    visit("subcomponent", info.subcomponent);
    visit("progress", info.progress);
    visit("total", info.total);
    visit("continue", info.continues);
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

/// The content of `value`; throws for any other type and for no value.
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

void Read(const ValuePtr& value, std::string_view key, std::wstring& text)
{
    text =
        zetcore::string::UTF8to16(serialization::ToStdString(Expect<serialization::Utf8String>(value, key)));
}

void Read(const ValuePtr& value, std::string_view key, PluginLocator& locator)
{
    std::wstring text;
    Read(value, key, text);
    locator = PluginLocator::FromString(text);
}

void Read(const ValuePtr& value, std::string_view key, std::int32_t& number)
{
    if (const auto* isSigned = std::any_cast<long long>(value.get()))
        number = static_cast<std::int32_t>(*isSigned);
    else
        number = static_cast<std::int32_t>(Expect<unsigned long long>(value, key));
}

void Read(const ValuePtr& value, std::string_view key, bool& flag)
{
    if (const auto* boolean = std::any_cast<bool>(value.get())) {
        flag = *boolean;
    } else if (const auto* number = std::any_cast<int>(value.get())) {
        flag = *number != 0;
    } else {
        const std::string text = serialization::ToStdString(Expect<serialization::Utf8String>(value, key));
        if (text != "true" && text != "false")
            throw WrongType(key);
        flag = text == "true";
    }
}

} // namespace

ValuePtr BuildScanInfoReply(const ScanInfo& info)
{
    Object record;
    VisitFields(info, [&record](const char* key, const auto& field) {
        record[serialization::ToUtf8String(key)] = ToValue(field);
    });
    return serialization::MakeValue(
        Object{{serialization::ToUtf8String(valueKey), serialization::MakeValue(std::move(record))}});
}

ScanInfo ReadScanInfoReply(const ValuePtr& reply)
{
    Expect<Object>(reply, "result");
    const ValuePtr record = serialization::GetVariantInObject(reply, valueKey);
    Expect<Object>(record, valueKey);
    ScanInfo info;
    VisitFields(info, [&record](const char* key, auto& field) {
        Read(serialization::GetVariantInObject(record, key), key, field);
    });
    return info;
}

ValuePtr BuildDoneReply()
{
    return serialization::MakeValue(Object());
}

} // namespace zetscanprotocol
