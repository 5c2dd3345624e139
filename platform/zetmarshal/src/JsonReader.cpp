#include <cmath>
#include <stdexcept>
#include <utility>
#include <vector>

#include <boost/json/basic_parser_impl.hpp>
#include <boost/system/error_code.hpp>
#include <zetcore/string/ParseNumber.h>
#include <zetmarshal/JsonValue.h>

namespace zetmarshal {

using namespace zetcore::serialization;
namespace json = boost::json;
using boost::system::error_code;

namespace {

/// Puts the values together while Boost's parser reads. Boost's own values are never made.
class ValueBuilder
{
  public:
    static constexpr std::size_t max_object_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_array_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_key_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_string_size = static_cast<std::size_t>(-1);

    ValuePtr Take() { return std::move(root); }

    bool on_document_begin(error_code&) { return true; }
    bool on_document_end(error_code&) { return true; }
    bool on_object_begin(error_code& error) { return Count(error) && Open(MakeValue(Object())); }
    bool on_object_end(std::size_t, error_code&) { return Close(); }
    bool on_array_begin(error_code& error) { return Count(error) && Open(MakeValue(Array())); }
    bool on_array_end(std::size_t, error_code&) { return Close(); }
    bool on_key_part(json::string_view part, std::size_t, error_code&) { return Gather(part); }
    bool on_key(json::string_view part, std::size_t, error_code&)
    {
        Gather(part);
        open.back().key = TakeText();
        return true;
    }
    bool on_string_part(json::string_view part, std::size_t, error_code&) { return Gather(part); }
    bool on_string(json::string_view part, std::size_t, error_code& error)
    {
        Gather(part);
        return Count(error) && Add(MakeValue(TakeText()));
    }
    bool on_number_part(json::string_view part, error_code&) { return Gather(part); }
    bool on_int64(std::int64_t number, json::string_view, error_code& error)
    {
        text.clear();
        return Count(error) && Add(MakeValue(static_cast<long long>(number)));
    }
    bool on_uint64(std::uint64_t number, json::string_view, error_code& error)
    {
        text.clear();
        return Count(error) && Add(MakeValue(static_cast<unsigned long long>(number)));
    }
    bool on_double(double, json::string_view part, error_code& error)
    {
        Gather(part);
        // Boost's own conversion is sometimes wrong in the last bit.
        const Utf8String digits = TakeText();
        const auto number = zetcore::string::ParseNumber<double>(
            {reinterpret_cast<const char*>(digits.data()), digits.size()});
        if (!number) {
            error = json::error::exponent_overflow;
            return false;
        }
        return Count(error) && Add(MakeValue(*number));
    }
    bool on_bool(bool value, error_code& error) { return Count(error) && Add(MakeValue(value)); }
    bool on_null(error_code& error) { return Count(error) && Add(std::make_shared<Value>()); }
    bool on_comment_part(json::string_view, error_code&) { return true; }
    bool on_comment(json::string_view, error_code&) { return true; }

  private:
    struct Container
    {
        ValuePtr value;
        Array* array;
        Object* object;
        Utf8String key;
    };

    bool Count(error_code& error)
    {
        if (++count <= maxJsonValues)
            return true;
        error = json::error::array_too_large;
        return false;
    }
    bool Gather(json::string_view part)
    {
        text.append(reinterpret_cast<const unsigned char*>(part.data()), part.size());
        return true;
    }
    Utf8String TakeText() { return std::exchange(text, Utf8String()); }

    bool Open(ValuePtr value)
    {
        auto* array = std::any_cast<Array>(value.get());
        auto* object = std::any_cast<Object>(value.get());
        open.push_back({std::move(value), array, object, {}});
        return true;
    }
    bool Close()
    {
        ValuePtr closed = std::move(open.back().value);
        open.pop_back();
        return Add(std::move(closed));
    }
    bool Add(ValuePtr value)
    {
        if (open.empty())
            root = std::move(value);
        else if (open.back().array)
            open.back().array->push_back(std::move(value));
        else
            (*open.back().object)[std::move(open.back().key)] = std::move(value);
        return true;
    }

    ValuePtr root;
    std::vector<Container> open;
    Utf8String text;
    std::size_t count = 0;
};

std::string Describe(const error_code& error)
{
    if (error == json::error::too_deep)
        return "it is nested deeper than " + std::to_string(maxJsonDepth);
    if (error == json::error::array_too_large)
        return "it holds more than " + std::to_string(maxJsonValues) + " values";
    if (error == json::error::incomplete)
        return "it ends too early";
    if (error == json::error::extra_data)
        return "something follows its end";
    if (error == json::error::exponent_overflow)
        return "a number is out of range";
    return error.message();
}

} // namespace

ValuePtr FromJson(std::string_view text)
{
    json::parse_options options;
    options.max_depth = maxJsonDepth;
    // File names cross as they are, and some of them are no valid Unicode.
    options.allow_invalid_utf8 = true;
    json::basic_parser<ValueBuilder> parser(options);
    error_code error;
    const std::size_t read = parser.write_some(false, text.data(), text.size(), error);
    if (!error && read < text.size())
        error = json::error::extra_data;
    if (error)
        throw std::runtime_error("this is no good JSON, at byte " + std::to_string(read) + ": " +
                                 Describe(error));
    return parser.handler().Take();
}

} // namespace zetmarshal
