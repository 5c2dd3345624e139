// Reads and writes the text of a locator. The input is used as text, and as the units of a path and a
// sub-component.
#include <cstring>
#include <string>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetcore/string/Utf.h>

#include "FuzzTarget.h"

namespace {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;

void CheckText(const std::wstring& text)
{
    const PluginLocator locator = PluginLocator::FromString(text);
    if (locator.IsEmpty())
        return;
    zetfuzz::Require(PluginLocator::FromString(locator.ToString()) == locator, "a locator survives its text");
}

void CheckParts(const std::wstring& path, const std::wstring& subcomponent)
{
    const PluginLocator locator(TechnologyType::VST3, path, subcomponent);
    const std::wstring text = locator.ToString();
    zetfuzz::Require(text.empty() == path.empty(), "all but an empty path has a text");
    if (path.empty())
        return;
    zetfuzz::Require(PluginLocator::FromString(text) == locator,
                     "any path and sub-component survive the text");
    zetfuzz::Require(text.find(L'\n') == std::wstring::npos && text.find(L'\0') == std::wstring::npos,
                     "the text is one line");
    // The text goes to the scanner and back.
    zetfuzz::Require(zetcore::string::UTF8to16(zetcore::string::UTF16to8(text)) == text,
                     "the text survives UTF-8");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes = zetfuzz::Text(data, size);
    CheckText(zetcore::string::UTF8to16(bytes));
    std::wstring units(size / sizeof(wchar_t), L'\0');
    std::memcpy(units.data(), data, units.size() * sizeof(wchar_t));
    CheckText(units);
    const std::size_t middle = units.empty() ? 0 : data[0] % (units.size() + 1);
    CheckParts(units.substr(0, middle), units.substr(middle));
    const std::wstring wide = zetcore::string::UTF8to16(bytes);
    CheckParts(wide.substr(0, wide.size() / 2), wide.substr(wide.size() / 2));
    return 0;
}
