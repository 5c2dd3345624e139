#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Writing XML text straight into a string. Whatever the bytes or units are, the result is well-formed: what
/// XML cannot hold becomes a space (control characters) or U+FFFD (what is no valid Unicode).
namespace zetaudiofilterhost {

/// Where the text holds a byte that is not valid UTF-8, or a control character other than tab and line ends;
/// `npos` when it does not.
std::size_t FindUnreadableByte(std::string_view text);

void AppendXmlEscaped(std::string& xml, std::string_view utf8);
void AppendXmlEscaped(std::string& xml, std::wstring_view text);

/// ` name="value"`. The name is written as it is.
void AppendXmlAttribute(std::string& xml, std::string_view name, std::string_view value);
void AppendXmlAttribute(std::string& xml, std::string_view name, std::wstring_view value);
void AppendXmlNumber(std::string& xml, std::string_view name, std::uint64_t value);
void AppendXmlNumber(std::string& xml, std::string_view name, std::int64_t value);
void AppendXmlBoolean(std::string& xml, std::string_view name, bool value);

} // namespace zetaudiofilterhost
