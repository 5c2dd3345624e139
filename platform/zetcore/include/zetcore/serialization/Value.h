#pragma once

#include <any>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

#include <zetcore/Export.h>

/// The values that cross a process boundary. Each is a `std::any`, held by a shared pointer. A string is a
/// `Utf8String`, a boolean a `bool`, an integer a `long long` or an `unsigned long long`, a real number a
/// `double`, an array an `Array`, an object an `Object`, and the null value an empty `std::any`.
namespace zetcore::serialization {

using Value = std::any;
using ValuePtr = std::shared_ptr<Value>;
/// UTF-8 bytes.
using Utf8String = std::basic_string<unsigned char>;
using Array = std::vector<ValuePtr>;
using Object = std::map<Utf8String, ValuePtr>;

/// An object lacks a key that it must have. The message names the key.
class ZETCORE_API missing_key_exception : public std::runtime_error
{
  public:
    explicit missing_key_exception(const std::string& key);
    ~missing_key_exception() override;
    const std::string& Key() const noexcept { return key; }

  private:
    std::string key;
};

ZETCORE_API Utf8String ToUtf8String(std::string_view utf8);
ZETCORE_API std::string ToStdString(const Utf8String& text);

/// Makes a value of any of the types above. A text literal must go through `MakeString`.
template<typename T>
ValuePtr MakeValue(T value)
{
    return std::make_shared<Value>(std::move(value));
}
ZETCORE_API ValuePtr MakeString(std::string_view utf8);
ZETCORE_API ValuePtr MakeString(std::wstring_view text);

ZETCORE_API void AppendToArray(const ValuePtr& array, ValuePtr element);

/// Returns the element with this key. Throws `missing_key_exception` when there is none, and
/// `std::bad_any_cast` when `object` is null or no object.
ZETCORE_API ValuePtr GetVariantInObject(const ValuePtr& object, std::string_view key);

/// Throws `std::bad_any_cast` when `value` is null or holds another type.
ZETCORE_API void AssertExpectedType(const ValuePtr& value, const std::type_info& type);

/// A request: a method's name and its positional arguments.
struct Call
{
    std::string method;
    ValuePtr arguments;
};

/// `arguments` must hold an `Array`, which may be empty, else this throws `std::bad_any_cast`.
ZETCORE_API Call BuildCall(std::string_view method, ValuePtr arguments);

} // namespace zetcore::serialization
