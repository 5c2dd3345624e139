#pragma once

#include <string>
#include <string_view>

#include <zetcore/Export.h>

/// Texts of plug-ins and paths on a terminal. Pure functions; any thread.
namespace zetcore::string {

/// Text that cannot command a terminal: control characters and the separators of lines become a space, what
/// is no Unicode and what changes the writing direction becomes U+FFFD. Line feeds stay where `keepLines`
/// says so.
ZETCORE_API std::wstring ForTerminal(std::wstring_view text, bool keepLines = false);

/// Columns that a character takes: two for the wide characters of East Asian scripts and for pictures, none
/// for combining marks. (The ranges are those that terminals commonly go by: Unicode's East Asian Width and
/// its blocks of combining marks.)
ZETCORE_API int TerminalWidth(char32_t codePoint);
ZETCORE_API int TerminalWidth(std::wstring_view text);

} // namespace zetcore::string
