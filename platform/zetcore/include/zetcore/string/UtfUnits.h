#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <zetcore/Export.h>

/// UTF-8 and UTF-16 as other programs, files and plug-ins hold them: functions that check texts, cut them and
/// put them together. string/Utf.h converts the host's own strings. Pure functions; any thread.
namespace zetcore::string {

inline constexpr char32_t replacementCharacter = 0xFFFD;
inline constexpr char32_t lastCodePoint = 0x10FFFF;

/// True for a byte that only stands inside of a character.
constexpr bool IsUTF8Continuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0u) == 0x80u;
}

/// Returns the number of bytes of the character at `index`, or 0 when there is no valid one. Only the
/// shortest form is valid, surrogates are not, and neither is anything above U+10FFFF.
constexpr std::size_t UTF8Length(std::string_view bytes, std::size_t index)
{
    const auto continues = [bytes](std::size_t at) {
        return at < bytes.size() && IsUTF8Continuation(bytes[at]);
    };
    if (index >= bytes.size())
        return 0;
    const auto lead = static_cast<unsigned char>(bytes[index]);
    if (lead < 0x80)
        return 1;
    // The bytes 0xC0 and 0xC1 would begin long forms of ASCII.
    if (lead < 0xC2 || lead > 0xF4 || !continues(index + 1))
        return 0;
    if (lead < 0xE0)
        return 2;
    // The second byte tells a long form, a surrogate and a code point above U+10FFFF.
    const auto second = static_cast<unsigned char>(bytes[index + 1]);
    if (!continues(index + 2) || (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F))
        return 0;
    if (lead < 0xF0)
        return 3;
    if (!continues(index + 3) || (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F))
        return 0;
    return 4;
}

/// True when the text is valid from its first byte to its last.
ZETCORE_API bool IsUTF8(std::string_view bytes);

/// Returns the beginning of the text. It has at most so many bytes and does not end inside of a character.
ZETCORE_API std::string_view CutUTF8(std::string_view bytes, std::size_t mostBytes);

/// Appends the code point. A surrogate gets its three-byte form, and U+FFFD takes the place of what is above
/// U+10FFFF.
inline void AppendUTF8(std::string& bytes, char32_t codePoint)
{
    const auto append = [&bytes](char32_t byte) {
        bytes.push_back(static_cast<char>(static_cast<unsigned char>(byte)));
    };
    if (codePoint < 0x80) {
        append(codePoint);
        return;
    }
    if (codePoint > lastCodePoint)
        codePoint = replacementCharacter;
    if (codePoint < 0x800) {
        append(0xC0 | (codePoint >> 6));
    } else if (codePoint < 0x10000) {
        append(0xE0 | (codePoint >> 12));
        append(0x80 | ((codePoint >> 6) & 0x3F));
    } else {
        append(0xF0 | (codePoint >> 18));
        append(0x80 | ((codePoint >> 12) & 0x3F));
        append(0x80 | ((codePoint >> 6) & 0x3F));
    }
    append(0x80 | (codePoint & 0x3F));
}

/// Converts between the host's strings and UTF-16. A surrogate without its other half stays as a stray unit.
ZETCORE_API std::u16string ToUTF16Units(std::wstring_view text);
ZETCORE_API std::wstring FromUTF16Units(std::u16string_view units);
/// Returns the beginning of the text. It has at most so many units and does not end inside of a pair.
ZETCORE_API std::u16string_view CutUTF16(std::u16string_view units, std::size_t mostUnits);

} // namespace zetcore::string
