#pragma once

#include <optional>
#include <string>
#include <string_view>

/// One part of a locator's text, and a folder's path in a file: what cannot stand in one line of a valid
/// Unicode text, and the locator's own signs '%' and '|', as '%' and hexadecimal digits.
namespace zetaudiofilterhost {

/// True when `EscapeLocatorPart` would give the part back as it is.
bool IsPlainLocatorPart(std::wstring_view part);
/// "%25" for a unit below 0x100, "%uDCFF" for others, "%U00110000" for those that need more digits.
std::wstring EscapeLocatorPart(std::wstring_view part);
/// Any unit may be escaped, in digits of either case. Nothing for a broken escape and for a unit that would
/// have to be escaped but is not.
std::optional<std::wstring> UnescapeLocatorPart(std::wstring_view text);

} // namespace zetaudiofilterhost
