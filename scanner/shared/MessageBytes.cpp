#include "MessageBytes.h"

#include <utility>

#include <zetcore/string/Utf.h>

namespace zetaudiofilterscan {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;

void MessageWriter::Text(std::string_view text)
{
    Size(text.size());
    bytes.append(text);
}

void MessageWriter::Wide(std::wstring_view text)
{
    const std::string utf8 = zetcore::string::UTF16to8(text);
    const bool isUtf8 = zetcore::string::UTF8to16(utf8) == text;
    Flag(isUtf8);
    if (isUtf8) {
        Text(utf8);
        return;
    }
    Size(text.size());
    for (const wchar_t unit : text)
        Integer(static_cast<std::uint32_t>(unit));
}

void MessageWriter::Locator(const PluginLocator& locator)
{
    Integer(static_cast<std::uint32_t>(locator.GetTechnologyType()));
    Wide(locator.GetPath());
    Wide(locator.GetSubcomponent());
}

bool MessageReader::Flag(const char* field)
{
    const auto byte = Integer<std::uint8_t>(field);
    if (byte > 1)
        Wrong(field);
    return byte == 1;
}

std::string MessageReader::Text(const char* field)
{
    return std::string(Take(Size(field), field));
}

std::wstring MessageReader::Wide(const char* field)
{
    if (Flag(field))
        return zetcore::string::UTF8to16(Text(field));
    std::wstring text;
    for (std::uint32_t left = Size(field); left > 0; --left)
        text += static_cast<wchar_t>(Integer<std::uint32_t>(field));
    return text;
}

PluginLocator MessageReader::Locator(const char* field)
{
    const auto technology = static_cast<TechnologyType>(Integer<std::uint32_t>(field));
    std::wstring path = Wide(field);
    PluginLocator locator(technology, std::move(path), Wide(field));
    if (!locator.IsValid())
        Wrong(field);
    return locator;
}

void MessageReader::End() const
{
    if (!rest.empty())
        throw std::runtime_error(std::to_string(rest.size()) + " bytes too many");
}

void MessageReader::Wrong(const char* field)
{
    throw std::runtime_error(std::string("wrong value: ") + field);
}

std::string_view MessageReader::Take(std::size_t size, const char* field)
{
    if (rest.size() < size)
        throw std::runtime_error(std::string("cut off: ") + field);
    const std::string_view taken = rest.substr(0, size);
    rest.remove_prefix(size);
    return taken;
}

} // namespace zetaudiofilterscan
