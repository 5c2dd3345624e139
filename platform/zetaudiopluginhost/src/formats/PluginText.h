#pragma once

#include <string>
#include <string_view>

namespace zetaudiopluginhost {

/// What a plug-in wrote into a text buffer, for showing: up to the first zero, UTF-8 (what is not valid
/// becomes U+FFFD), without control characters and surrounding spaces, of a length that fits a list.
std::wstring PluginText(std::string_view buffer);
/// The same for UTF-16. A maker's factory that widens UTF-8 byte by byte, with the sign bit, gives units of
/// which each above U+007F is U+FF80 or more: where their low bytes are valid UTF-8, that is the text.
std::wstring PluginText(std::u16string_view buffer);

/// The file's name without folder and extension, for showing.
std::wstring FileStem(const std::wstring& path);

/// Valid UTF-8 for a reason: names and messages of plug-ins may hold anything.
std::string ReasonText(std::string_view text);

} // namespace zetaudiopluginhost
