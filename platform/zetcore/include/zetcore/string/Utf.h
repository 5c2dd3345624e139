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
/// For text known to be ASCII; other bytes are taken as Latin-1.
ZETCORE_API std::wstring AsciiToUTF16(std::string_view text);

/// Valid Unicode for showing: stray units become U+FFFD, control characters a space.
ZETCORE_API std::wstring ForDisplay(std::wstring_view text);
/// True for a unit (at `index`) that is no part of a Unicode scalar value: what a text file cannot hold.
ZETCORE_API bool IsStrayUnit(std::wstring_view text, std::size_t index);
/// The next whole code point (a stray unit counts as one), moving `index` past it.
ZETCORE_API char32_t NextCodePoint(std::wstring_view text, std::size_t& index);
ZETCORE_API void AppendCodePoint(std::wstring& text, char32_t codePoint);
/// Letter case apart, by Unicode's simple case folding of the running C library or system.
ZETCORE_API bool EqualIgnoringCase(std::wstring_view left, std::wstring_view right);

} // namespace zetcore::string
