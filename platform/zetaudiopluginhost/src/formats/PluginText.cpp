#include "formats/PluginText.h"

#include <algorithm>

#include <zetcore/filesupport/paths/File.h>
#include <zetcore/string/Utf.h>
#include <zetcore/string/UtfUnits.h>

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
    return !isPlain && IsUTF8(bytes) ? bytes : std::string();
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
    return Shown(FromUTF16Units(buffer));
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
