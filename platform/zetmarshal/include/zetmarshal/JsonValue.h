#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <zetcore/serialization/Value.h>
#include <zetmarshal/Export.h>

/// The serialised values as JSON text and back. Integers from -2^63 to 2^64 - 1 cross exactly: those that fit
/// a signed 64-bit number come back as `long long`, larger ones as `unsigned long long`.
namespace zetmarshal {

/// Deeper nesting is refused.
inline constexpr std::size_t maxJsonDepth = 64;

/// One line of UTF-8. Throws `std::bad_any_cast` for a type that is no serialised value.
ZETMARSHAL_API std::string ToJson(const zetcore::serialization::ValuePtr& value);
/// Throws `std::runtime_error` that says what is wrong, and where.
ZETMARSHAL_API zetcore::serialization::ValuePtr FromJson(std::string_view text);

} // namespace zetmarshal
