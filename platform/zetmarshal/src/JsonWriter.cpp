#include "JsonWriter.h"

#include <array>
#include <charconv>
#include <cmath>
#include <stdexcept>
#include <typeinfo>

#include <zetmarshal/JsonValue.h>

namespace zetmarshal {

using namespace zetcore::serialization;

namespace {

std::string_view BytesOf(const Utf8String& text)
{
    return {reinterpret_cast<const char*>(text.data()), text.size()};
}

template<typename Number>
void AppendNumber(std::string& text, Number number)
{
    std::array<char, 32> digits;
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    text.append(digits.data(), result.ptr);
}

void AppendReal(std::string& text, double number)
{
    if (!std::isfinite(number))
        throw std::range_error("a number that is not finite has no JSON form");
    const std::size_t begin = text.size();
    AppendNumber(text, number);
    // A real number that is whole must not come back as an integer.
    if (text.find_first_of(".e", begin) == std::string::npos)
        text += ".0";
}

void AppendArray(std::string& text, const Array& array, std::size_t depth)
{
    text += '[';
    bool first = true;
    for (const ValuePtr& element : array) {
        if (!first)
            text += ',';
        first = false;
        AppendJson(text, element, depth);
    }
    text += ']';
}

void AppendObject(std::string& text, const Object& object, std::size_t depth)
{
    text += '{';
    bool first = true;
    for (const auto& [key, element] : object) {
        if (!first)
            text += ',';
        first = false;
        AppendJsonString(text, BytesOf(key));
        text += ':';
        AppendJson(text, element, depth);
    }
    text += '}';
}

void AppendEscaped(std::string& text, char letter)
{
    constexpr std::string_view hex = "0123456789abcdef";
    switch (letter) {
    case '"':
        text += "\\\"";
        break;
    case '\\':
        text += "\\\\";
        break;
    case '\n':
        text += "\\n";
        break;
    case '\r':
        text += "\\r";
        break;
    case '\t':
        text += "\\t";
        break;
    default:
        text += "\\u00";
        text += hex[static_cast<unsigned char>(letter) >> 4];
        text += hex[static_cast<unsigned char>(letter) & 15];
    }
}

bool MustBeEscaped(char letter)
{
    return static_cast<unsigned char>(letter) < 0x20 || letter == '"' || letter == '\\';
}

/// Appends a number, also of a type that is not one of the value model's. Returns false for any other type.
bool AppendAnyNumber(std::string& text, const Value& value)
{
    const auto append = [&]<typename... Types>() {
        return (... ||
                (value.type() == typeid(Types) && (AppendNumber(text, std::any_cast<Types>(value)), true)));
    };
    return append.
    operator()<long long, unsigned long long, int, unsigned, long, unsigned long, short, unsigned short>();
}

} // namespace

void AppendJsonString(std::string& text, std::string_view bytes)
{
    text += '"';
    std::size_t plain = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (!MustBeEscaped(bytes[i]))
            continue;
        text += bytes.substr(plain, i - plain);
        AppendEscaped(text, bytes[i]);
        plain = i + 1;
    }
    text += bytes.substr(plain);
    text += '"';
}

void AppendJson(std::string& text, const ValuePtr& value, std::size_t depth)
{
    const bool isArray = value && value->type() == typeid(Array);
    const bool isObject = value && value->type() == typeid(Object);
    if ((isArray || isObject) && depth >= maxJsonDepth)
        throw std::length_error("the value is nested deeper than " + std::to_string(maxJsonDepth));
    if (!value || !value->has_value())
        text += "null";
    else if (isArray)
        AppendArray(text, *std::any_cast<Array>(value.get()), depth + 1);
    else if (isObject)
        AppendObject(text, *std::any_cast<Object>(value.get()), depth + 1);
    else if (const auto* string = std::any_cast<Utf8String>(value.get()))
        AppendJsonString(text, BytesOf(*string));
    else if (const auto* narrow = std::any_cast<std::string>(value.get()))
        AppendJsonString(text, *narrow);
    else if (const auto* boolean = std::any_cast<bool>(value.get()))
        text += *boolean ? "true" : "false";
    else if (const auto* real = std::any_cast<double>(value.get()))
        AppendReal(text, *real);
    else if (const auto* single = std::any_cast<float>(value.get()))
        AppendReal(text, *single);
    else if (!AppendAnyNumber(text, *value))
        throw std::bad_any_cast();
}

std::string ToJson(const ValuePtr& value)
{
    std::string text;
    AppendJson(text, value, 0);
    return text;
}

} // namespace zetmarshal
