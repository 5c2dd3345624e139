#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Texts of plug-ins and paths, made fit for a terminal or for JSON. Pure functions; any thread.
namespace zetaudiopluginmanager {

/// One line of valid UTF-8 without anything that a terminal would obey (`zetcore::string::ForTerminal`).
std::string ForTerminal(std::wstring_view text);
/// The same for each line of a UTF-8 text; empty lines at its end are left out.
std::vector<std::string> LinesForTerminal(std::string_view utf8);

/// Valid UTF-8, otherwise unchanged; what is no Unicode becomes U+FFFD.
std::string ForJson(std::wstring_view text);
std::string ForJson(std::string_view utf8);
/// Valid UTF-8; a unit that is no Unicode is written as in a locator's text, "%uDCFF" for the byte 0xFF. All
/// else, '%' included, stands as it is.
std::string PathForJson(std::wstring_view path);

/// How many columns a terminal needs for a text that `ForTerminal` made.
std::size_t DisplayWidth(std::string_view utf8);
/// Shortens to at most `width` columns: the end or the beginning gives way to an ellipsis.
std::string CutEnd(std::string_view utf8, std::size_t width);
std::string CutBeginning(std::string_view utf8, std::size_t width);
/// Breaks at spaces into lines of at most `width` columns, longer words anywhere; 0 breaks nowhere.
std::vector<std::string> Wrap(std::string_view utf8, std::size_t width);

} // namespace zetaudiopluginmanager
