#pragma once

#include <string>
#include <string_view>

namespace zetaudiopluginhost {

/// The text that a plug-in wrote into a buffer, for showing. It ends at the first zero. Bytes that are not
/// valid UTF-8 become U+FFFD. Control characters and surrounding spaces are left out, and the text is cut to
/// a length that fits a list.
std::wstring PluginText(std::string_view buffer);
/// The same for UTF-16. A maker's factory that widens UTF-8 byte by byte, with the sign bit, gives units of
/// which each above U+007F is U+FF80 or more: where their low bytes are valid UTF-8, that is the text.
std::wstring PluginText(std::u16string_view buffer);

/// The file's name without folder and extension, for showing.
std::wstring FileStem(const std::wstring& path);

/// Valid UTF-8 for a reason: names and messages of plug-ins may hold anything.
std::string ReasonText(std::string_view text);

} // namespace zetaudiopluginhost
