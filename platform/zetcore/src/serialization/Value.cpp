#include <zetcore/serialization/Value.h>

#include <utility>

#include <zetcore/string/Utf.h>

namespace zetcore::serialization {

missing_key_exception::missing_key_exception(const std::string& missingKey)
    : std::runtime_error("Missing key \"" + missingKey + "\""), key(missingKey)
{}

missing_key_exception::~missing_key_exception() = default;

Utf8String ToUtf8String(std::string_view utf8)
{
    return {utf8.begin(), utf8.end()};
}

std::string ToStdString(const Utf8String& text)
{
    return {text.begin(), text.end()};
}

ValuePtr MakeString(std::string_view utf8)
{
    return MakeValue(ToUtf8String(utf8));
}

ValuePtr MakeString(std::wstring_view text)
{
    return MakeString(std::string_view(string::UTF16to8(text)));
}

void AppendToArray(const ValuePtr& array, ValuePtr element)
{
    AssertExpectedType(array, typeid(Array));
    std::any_cast<Array&>(*array).push_back(std::move(element));
}

ValuePtr GetVariantInObject(const ValuePtr& object, std::string_view key)
{
    AssertExpectedType(object, typeid(Object));
    const auto& elements = std::any_cast<const Object&>(*object);
    const auto found = elements.find(ToUtf8String(key));
    if (found == elements.end())
        throw missing_key_exception(std::string(key));
    return found->second;
}

void AssertExpectedType(const ValuePtr& value, const std::type_info& type)
{
    if (!value || value->type() != type)
        throw std::bad_any_cast();
}

Call BuildCall(std::string_view method, ValuePtr arguments)
{
    AssertExpectedType(arguments, typeid(Array));
    return {std::string(method), std::move(arguments)};
}

} // namespace zetcore::serialization
