#pragma once

#include <string>
#include <string_view>

#include <zetcore/Export.h>

/// Conversions between the host's wide strings (UTF-16 on Windows, UTF-32 elsewhere) and UTF-8.
///
/// They carry names that are not valid Unicode and are exact in both directions. Elsewhere than on Windows a
/// byte that is not part of valid UTF-8 becomes the stray unit U+DC80 + (byte - 0x80), and back. On Windows
/// an unpaired surrogate becomes its three-byte form, and back.
namespace zetcore::string {

ZETCORE_API std::string UTF16to8(std::wstring_view text);
ZETCORE_API std::wstring UTF8to16(std::string_view text);
/// Takes a text that is known to be ASCII. Other bytes are taken for Latin-1.
ZETCORE_API std::wstring AsciiToUTF16(std::string_view text);

/// Returns valid Unicode for showing. Stray units become U+FFFD, and control characters become spaces.
ZETCORE_API std::wstring ForDisplay(std::wstring_view text);
/// True when the unit at `index` is no part of a Unicode character. A text file cannot hold it.
ZETCORE_API bool IsStrayUnit(std::wstring_view text, std::size_t index);
/// Returns the next code point and moves `index` past it. A stray unit counts as one.
ZETCORE_API char32_t NextCodePoint(std::wstring_view text, std::size_t& index);
ZETCORE_API void AppendCodePoint(std::wstring& text, char32_t codePoint);
/// Compares without regard to letter case, by the simple case folding of Unicode that the running C library
/// or system has.
ZETCORE_API bool EqualIgnoringCase(std::wstring_view left, std::wstring_view right);

} // namespace zetcore::string
