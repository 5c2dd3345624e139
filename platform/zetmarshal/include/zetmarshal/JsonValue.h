#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <zetcore/serialization/Value.h>
#include <zetmarshal/Export.h>

/// Writes serialised values as JSON text, and reads them. Integers from -2^63 to 2^64 - 1 cross exactly.
/// Integers that fit a signed 64-bit number come back as `long long`, larger ones as `unsigned long long`.
namespace zetmarshal {

/// Deeper nesting is refused, because reading and destroying a value takes stack for each level. The
/// scanner's messages are four levels deep.
inline constexpr std::size_t maxJsonDepth = 64;
/// A text with more values is refused. A value takes about a hundred bytes of memory, and may take only two
/// bytes of the text. The longest message that there is has one for each plug-in of a scan.
inline constexpr std::size_t maxJsonValues = 1'000'000;

/// Writes one line. Strings are taken to be UTF-8, and bytes that are not cross unchanged. A null pointer is
/// written as null, and other integer types, `float` and `std::string` as what they stand for. Throws
/// `std::bad_any_cast` for any other type, `std::length_error` for a value that is nested too deep, and
/// `std::range_error` for a real number that is not finite.
ZETMARSHAL_API std::string ToJson(const zetcore::serialization::ValuePtr& value);
/// Reads one value. When a key stands twice in an object, the last one counts. Throws `std::runtime_error`
/// that says what is wrong, and where.
ZETMARSHAL_API zetcore::serialization::ValuePtr FromJson(std::string_view text);

} // namespace zetmarshal
