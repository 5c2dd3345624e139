#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <zetcore/string/UtfUnits.h>

/// The conversions of string/Utf.h for both widths of wide characters, so that the tests of one platform
/// cover the other. `Unit` is a 16-bit or 32-bit character type.
namespace zetcore::string::codec {

/// A stray byte (0x80 to 0xFF) becomes this plus the byte in 32-bit text.
inline constexpr char32_t strayByteBase = 0xDC00;

constexpr bool IsHighSurrogate(char32_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

constexpr bool IsLowSurrogate(char32_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

constexpr bool IsSurrogate(char32_t unit)
{
    return unit >= 0xD800 && unit <= 0xDFFF;
}

struct Decoded
{
    char32_t codePoint = 0;
    /// The number of bytes. It is 0 when the bytes are not what was looked for.
    std::size_t length = 0;
};

/// Reads the character of valid UTF-8 at `index`.
Decoded DecodeUTF8(std::string_view bytes, std::size_t index);
/// Reads the three-byte form of a surrogate at `index`.
Decoded DecodeSurrogate(std::string_view bytes, std::size_t index);

template<typename Unit>
inline constexpr bool isUTF16 = sizeof(Unit) == 2;

template<typename Unit>
constexpr char32_t UnitValue(Unit unit)
{
    if constexpr (isUTF16<Unit>)
        return static_cast<char16_t>(unit);
    else
        return static_cast<char32_t>(unit);
}

template<typename Unit>
char32_t NextCodePoint(std::basic_string_view<Unit> text, std::size_t& index)
{
    if (index >= text.size()) {
        index = text.size();
        return 0;
    }
    const char32_t first = UnitValue(text[index++]);
    if constexpr (isUTF16<Unit>) {
        if (IsHighSurrogate(first) && index < text.size()) {
            const char32_t second = UnitValue(text[index]);
            if (IsLowSurrogate(second)) {
                ++index;
                return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
            }
        }
    }
    return first;
}

template<typename Unit>
void AppendCodePoint(std::basic_string<Unit>& text, char32_t codePoint)
{
    if (codePoint > lastCodePoint)
        codePoint = replacementCharacter;
    if constexpr (isUTF16<Unit>) {
        if (codePoint > 0xFFFF) {
            text.push_back(static_cast<Unit>(0xD800 + ((codePoint - 0x10000) >> 10)));
            text.push_back(static_cast<Unit>(0xDC00 + ((codePoint - 0x10000) & 0x3FF)));
            return;
        }
    }
    text.push_back(static_cast<Unit>(codePoint));
}

template<typename Unit>
bool IsStrayUnit(std::basic_string_view<Unit> text, std::size_t index)
{
    if (index >= text.size())
        return false;
    const char32_t unit = UnitValue(text[index]);
    if constexpr (isUTF16<Unit>) {
        if (IsHighSurrogate(unit))
            return index + 1 >= text.size() || !IsLowSurrogate(UnitValue(text[index + 1]));
        if (IsLowSurrogate(unit))
            return index == 0 || !IsHighSurrogate(UnitValue(text[index - 1]));
        return false;
    } else {
        return IsSurrogate(unit) || unit > lastCodePoint;
    }
}

template<typename Unit>
std::string ToUTF8(std::basic_string_view<Unit> text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t index = 0; index < text.size();) {
        const char32_t codePoint = NextCodePoint(text, index);
        if (!isUTF16<Unit> && codePoint >= strayByteBase + 0x80 && codePoint <= strayByteBase + 0xFF)
            bytes.push_back(static_cast<char>(codePoint - strayByteBase));
        else
            AppendUTF8(bytes, codePoint);
    }
    return bytes;
}

template<typename Unit>
std::basic_string<Unit> FromUTF8(std::string_view bytes)
{
    std::basic_string<Unit> text;
    text.reserve(bytes.size());
    for (std::size_t index = 0; index < bytes.size();) {
        Decoded decoded = DecodeUTF8(bytes, index);
        if (decoded.length == 0) {
            if constexpr (isUTF16<Unit>) {
                decoded = DecodeSurrogate(bytes, index);
                if (decoded.length == 0)
                    decoded = {replacementCharacter, 1};
            } else {
                decoded = {strayByteBase + static_cast<unsigned char>(bytes[index]), 1};
            }
        }
        AppendCodePoint(text, decoded.codePoint);
        index += decoded.length;
    }
    return text;
}

template<typename Unit>
std::basic_string<Unit> ForDisplay(std::basic_string_view<Unit> text)
{
    std::basic_string<Unit> shown;
    shown.reserve(text.size());
    for (std::size_t index = 0; index < text.size();) {
        const bool stray = IsStrayUnit(text, index);
        const char32_t codePoint = NextCodePoint(text, index);
        const bool control = codePoint < 0x20 || (codePoint >= 0x7F && codePoint <= 0x9F);
        AppendCodePoint(shown, stray ? replacementCharacter : control ? U' ' : codePoint);
    }
    return shown;
}

} // namespace zetcore::string::codec
