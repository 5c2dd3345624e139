#pragma once

#include <string>
#include <string_view>

#include <zetcore/Export.h>

/// Texts of plug-ins, and paths, as a terminal shows them. Pure functions; any thread.
namespace zetcore::string {

/// Returns a text that cannot command a terminal. Control characters and line separators become spaces.
/// U+FFFD takes the place of what is no Unicode and of what changes the writing direction. Line feeds stay
/// when `keepLines` is true.
ZETCORE_API std::wstring ForTerminal(std::wstring_view text, bool keepLines = false);

/// Returns how many columns the character takes: two for the wide characters of East Asian scripts and for
/// pictures, none for combining marks. The ranges are those that terminals commonly go by: Unicode's East
/// Asian Width and its blocks of combining marks.
ZETCORE_API int TerminalWidth(char32_t codePoint);
ZETCORE_API int TerminalWidth(std::wstring_view text);

} // namespace zetcore::string
