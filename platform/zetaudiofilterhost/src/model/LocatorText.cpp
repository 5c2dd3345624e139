#include "model/LocatorText.h"

#include <cstdint>
#include <type_traits>

#include <zetcore/string/Utf.h>

namespace zetaudiofilterhost {

namespace {

using Unit = std::uint32_t;

Unit ToUnit(wchar_t character)
{
    return static_cast<Unit>(static_cast<std::make_unsigned_t<wchar_t>>(character));
}

bool IsPlainAscii(Unit unit)
{
    return unit >= 0x20 && unit < 0x7f && unit != '%' && unit != '|';
}

bool MustEscape(std::wstring_view text, std::size_t index)
{
    const Unit unit = ToUnit(text[index]);
    if (unit < 0xa0)
        return !IsPlainAscii(unit);
    // The line separators end a line for some readers; the last two are no XML characters.
    if (unit == 0x2028 || unit == 0x2029 || unit == 0xfffe || unit == 0xffff)
        return true;
    return zetcore::string::IsStrayUnit(text, index);
}

void AppendHex(std::wstring& result, Unit value, int digits)
{
    for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4)
        result += L"0123456789ABCDEF"[(value >> shift) & 0xf];
}

void AppendEscape(std::wstring& result, Unit unit)
{
    result += L'%';
    if (unit < 0x100) {
        AppendHex(result, unit, 2);
    } else if (unit < 0x10000) {
        result += L'u';
        AppendHex(result, unit, 4);
    } else {
        result += L'U';
        AppendHex(result, unit, 8);
    }
}

std::optional<Unit> ReadHex(std::wstring_view text, std::size_t& index, int digits)
{
    Unit value = 0;
    for (int count = 0; count < digits; ++count, ++index) {
        if (index >= text.size())
            return std::nullopt;
        const wchar_t digit = text[index];
        if (digit >= L'0' && digit <= L'9')
            value = value * 16 + static_cast<Unit>(digit - L'0');
        else if (digit >= L'A' && digit <= L'F')
            value = value * 16 + static_cast<Unit>(digit - L'A' + 10);
        else if (digit >= L'a' && digit <= L'f')
            value = value * 16 + static_cast<Unit>(digit - L'a' + 10);
        else
            return std::nullopt;
    }
    return value;
}

/// `index` is behind the '%'.
std::optional<Unit> ReadEscape(std::wstring_view text, std::size_t& index)
{
    int digits = 2;
    if (index < text.size() && (text[index] == L'u' || text[index] == L'U'))
        digits = text[index++] == L'u' ? 4 : 8;
    const std::optional<Unit> unit = ReadHex(text, index, digits);
    if (!unit || (sizeof(wchar_t) == 2 && *unit > 0xffff))
        return std::nullopt;
    return unit;
}

/// How many units the character at `index` takes.
std::size_t CharacterLength(std::wstring_view text, std::size_t index)
{
    std::size_t next = index;
    zetcore::string::NextCodePoint(text, next);
    return next - index;
}

} // namespace

bool IsPlainLocatorPart(std::wstring_view part)
{
    for (std::size_t index = 0; index < part.size();) {
        if (IsPlainAscii(ToUnit(part[index]))) {
            ++index;
            continue;
        }
        if (MustEscape(part, index))
            return false;
        index += CharacterLength(part, index);
    }
    return true;
}

std::wstring EscapeLocatorPart(std::wstring_view part)
{
    std::wstring result;
    result.reserve(part.size());
    for (std::size_t index = 0; index < part.size();) {
        if (MustEscape(part, index)) {
            AppendEscape(result, ToUnit(part[index++]));
            continue;
        }
        const std::size_t length = CharacterLength(part, index);
        result.append(part, index, length);
        index += length;
    }
    return result;
}

std::optional<std::wstring> UnescapeLocatorPart(std::wstring_view text)
{
    std::wstring result;
    result.reserve(text.size());
    for (std::size_t index = 0; index < text.size();) {
        const Unit unit = ToUnit(text[index]);
        if (IsPlainAscii(unit)) {
            result += text[index++];
        } else if (unit == '%') {
            const std::optional<Unit> escaped = ReadEscape(text, ++index);
            if (!escaped)
                return std::nullopt;
            result += static_cast<wchar_t>(*escaped);
        } else if (MustEscape(text, index)) {
            return std::nullopt;
        } else {
            const std::size_t length = CharacterLength(text, index);
            result.append(text, index, length);
            index += length;
        }
    }
    return result;
}

} // namespace zetaudiofilterhost
