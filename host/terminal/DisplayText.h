#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// These make texts of plug-ins and paths fit for a terminal or for JSON. They are pure functions. Any
/// thread.
namespace zetaudiopluginmanager {

/// One line of valid UTF-8 without control sequences of terminals (`zetcore::string::ForTerminal`).
std::string ForTerminal(std::wstring_view text);
/// Does the same for each line of a UTF-8 text. Empty lines at its end are left out.
std::vector<std::string> LinesForTerminal(std::string_view utf8);

/// The text as valid UTF-8. A unit that is not Unicode becomes U+FFFD. Nothing else changes.
std::string ForJson(std::wstring_view text);
std::string ForJson(std::string_view utf8);
/// The path as valid UTF-8. A unit that is not Unicode is written as in a locator's text: "%uDCFF" for the
/// byte 0xFF. Nothing else changes, not even '%'.
std::string PathForJson(std::wstring_view path);

/// The number of columns that a terminal needs for a text from `ForTerminal`.
std::size_t DisplayWidth(std::string_view utf8);
/// These shorten a text to at most `width` columns. An ellipsis replaces its end or its beginning.
std::string CutEnd(std::string_view utf8, std::size_t width);
std::string CutBeginning(std::string_view utf8, std::size_t width);
/// Breaks a text into lines of at most `width` columns. It breaks at spaces, and inside a word only when the
/// word is longer than a line. With 0 it breaks nowhere.
std::vector<std::string> Wrap(std::string_view utf8, std::size_t width);

} // namespace zetaudiopluginmanager
