#include <zetcore/string/UtfUnits.h>

#include "string/UtfCodec.h"

namespace zetcore::string {

bool IsUTF8(std::string_view bytes)
{
    for (std::size_t index = 0; index < bytes.size();) {
        const std::size_t length = UTF8Length(bytes, index);
        if (length == 0)
            return false;
        index += length;
    }
    return true;
}

std::string_view CutUTF8(std::string_view bytes, std::size_t mostBytes)
{
    if (bytes.size() <= mostBytes)
        return bytes;
    while (mostBytes > 0 && IsUTF8Continuation(bytes[mostBytes]))
        --mostBytes;
    return bytes.substr(0, mostBytes);
}

std::u16string ToUTF16Units(std::wstring_view text)
{
    std::u16string units;
    units.reserve(text.size());
    for (std::size_t index = 0; index < text.size();)
        codec::AppendCodePoint(units, codec::NextCodePoint(text, index));
    return units;
}

std::wstring FromUTF16Units(std::u16string_view units)
{
    std::wstring text;
    text.reserve(units.size());
    for (std::size_t index = 0; index < units.size();)
        codec::AppendCodePoint(text, codec::NextCodePoint(units, index));
    return text;
}

std::u16string_view CutUTF16(std::u16string_view units, std::size_t mostUnits)
{
    if (units.size() <= mostUnits)
        return units;
    if (mostUnits > 0 && codec::IsHighSurrogate(units[mostUnits - 1]) &&
        codec::IsLowSurrogate(units[mostUnits]))
        --mostUnits;
    return units.substr(0, mostUnits);
}

} // namespace zetcore::string
