#include "formats/PluginText.h"

#include <algorithm>

#include <zetcore/filesupport/paths/File.h>
#include <zetcore/string/Utf.h>

namespace zetaudiopluginhost {

using namespace zetcore::string;

namespace {

/// Characters: more than any list shows of a name, and what a plug-in leaves unterminated ends here.
constexpr std::size_t maxLength = 255;

std::wstring Shown(std::wstring_view text)
{
    const std::wstring shown = ForDisplay(text.substr(0, text.find(L'\0')));
    const std::size_t first = shown.find_first_not_of(L' ');
    if (first == std::wstring::npos)
        return {};
    std::wstring cut = shown.substr(first, maxLength);
    cut.erase(cut.find_last_not_of(L' ') + 1);
    // The cut may have gone through a surrogate pair.
    return ForDisplay(cut);
}

bool IsSurrogate(char16_t unit)
{
    return unit >= 0xD800 && unit < 0xE000;
}

bool IsPair(char16_t high, char16_t low)
{
    return high >= 0xD800 && high < 0xDC00 && low >= 0xDC00 && low < 0xE000;
}

bool IsValidUtf8(const std::string& text)
{
    const std::wstring wide = UTF8to16(text);
    for (std::size_t i = 0; i < wide.size(); ++i) {
        if (IsStrayUnit(wide, i))
            return false;
    }
    // What was replaced does not come back.
    return UTF16to8(wide) == text;
}

/// Empty unless the text is UTF-8 that was widened with the sign bit.
std::string NarrowedBack(std::u16string_view text)
{
    const auto isAscii = [](char16_t unit) { return unit < 0x80; };
    const auto isWidened = [](char16_t unit) { return unit >= 0xFF80; };
    std::string bytes;
    for (const char16_t unit : text) {
        if (!isAscii(unit) && !isWidened(unit))
            return {};
        bytes += static_cast<char>(unit & 0xFF);
    }
    const bool isPlain = std::all_of(text.begin(), text.end(), isAscii);
    return !isPlain && IsValidUtf8(bytes) ? bytes : std::string();
}

} // namespace

std::wstring PluginText(std::string_view buffer)
{
    return Shown(UTF8to16(buffer.substr(0, buffer.find('\0'))));
}

std::wstring PluginText(std::u16string_view buffer)
{
    buffer = buffer.substr(0, buffer.find(u'\0'));
    if (const std::string narrow = NarrowedBack(buffer); !narrow.empty())
        return PluginText(narrow);
    std::wstring text;
    for (std::size_t i = 0; i < buffer.size(); ++i) {
        if (i + 1 < buffer.size() && IsPair(buffer[i], buffer[i + 1])) {
            const auto high = static_cast<char32_t>(buffer[i] - 0xD800);
            const auto low = static_cast<char32_t>(buffer[i + 1] - 0xDC00);
            AppendCodePoint(text, 0x10000 + (high << 10) + low);
            ++i;
        } else {
            AppendCodePoint(text, IsSurrogate(buffer[i]) ? U'\uFFFD' : static_cast<char32_t>(buffer[i]));
        }
    }
    return Shown(text);
}

std::wstring FileStem(const std::wstring& path)
{
    const std::wstring title = zetcore::filesupport::File(path).GetTitle();
    const std::size_t dot = title.rfind(L'.');
    return ForDisplay(dot == std::wstring::npos || dot == 0 ? title : title.substr(0, dot));
}

std::string ReasonText(std::string_view text)
{
    return UTF16to8(ForDisplay(UTF8to16(text)));
}

} // namespace zetaudiopluginhost
