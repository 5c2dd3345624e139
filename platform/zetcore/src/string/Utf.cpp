#include <zetcore/string/Utf.h>

#include "string/CaseFolding.h"
#include "string/UtfCodec.h"

namespace zetcore::string {

std::string UTF16to8(std::wstring_view text)
{
    return codec::ToUTF8(text);
}

std::wstring UTF8to16(std::string_view text)
{
    return codec::FromUTF8<wchar_t>(text);
}

std::wstring AsciiToUTF16(std::string_view text)
{
    std::wstring wide;
    wide.reserve(text.size());
    for (const char character : text)
        wide.push_back(static_cast<unsigned char>(character));
    return wide;
}

std::wstring ForDisplay(std::wstring_view text)
{
    return codec::ForDisplay(text);
}

bool IsStrayUnit(std::wstring_view text, std::size_t index)
{
    return codec::IsStrayUnit(text, index);
}

char32_t NextCodePoint(std::wstring_view text, std::size_t& index)
{
    return codec::NextCodePoint(text, index);
}

void AppendCodePoint(std::wstring& text, char32_t codePoint)
{
    codec::AppendCodePoint(text, codePoint);
}

bool EqualIgnoringCase(std::wstring_view left, std::wstring_view right)
{
    if (left.size() != right.size())
        return false;
    return left.empty() || EqualFolded(left, right);
}

} // namespace zetcore::string
