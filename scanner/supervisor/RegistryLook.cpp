#include "RegistryLook.h"

#include <charconv>
#include <exception>
#include <optional>

#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/File.h>
#include <zetcore/filesupport/FileUtils.h>
#include <zetcore/string/Utf.h>

namespace zetaudiofilterscan {

using zetaudiofilterhost::PluginLocator;
using zetcore::filesupport::File;

namespace {

// The text of an attribute inside an element; the registry writes every one in double quotes.
std::optional<std::string_view> Attribute(std::string_view element, std::string_view name)
{
    const std::string start = " " + std::string(name) + "=\"";
    const auto found = element.find(start);
    if (found == std::string_view::npos)
        return std::nullopt;
    const auto value = element.substr(found + start.size());
    return value.substr(0, value.find('"'));
}

// What stands for "&name;"; empty for what is no reference that we know.
std::string Resolve(std::string_view name)
{
    if (name == "amp")
        return "&";
    if (name == "lt")
        return "<";
    if (name == "gt")
        return ">";
    if (name == "quot")
        return "\"";
    if (name == "apos")
        return "'";
    if (!name.starts_with('#'))
        return {};
    const bool isHex = name.size() > 1 && name[1] == 'x';
    const std::string_view digits = name.substr(isHex ? 2 : 1);
    std::uint32_t code = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), code, isHex ? 16 : 10);
    if (error != std::errc{} || end != digits.data() + digits.size() || code > 0x10FFFF)
        return {};
    std::wstring character;
    zetcore::string::AppendCodePoint(character, code);
    return zetcore::string::UTF16to8(character);
}

std::string Unescape(std::string_view text)
{
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const auto semicolon = text[at] == '&' ? text.find(';', at) : std::string_view::npos;
        if (semicolon == std::string_view::npos) {
            result += text[at++];
            continue;
        }
        result += Resolve(text.substr(at + 1, semicolon - at - 1));
        at = semicolon + 1;
    }
    return result;
}

} // namespace

std::vector<PluginLocator> WorkingVST3Modules(std::string_view text)
{
    constexpr std::string_view elementStart = "<module ";
    constexpr std::string_view locatorStart = "VST3|";
    std::vector<PluginLocator> modules;
    for (auto at = text.find(elementStart); at != std::string_view::npos;) {
        const auto next = text.find(elementStart, at + elementStart.size());
        const std::string_view element =
            text.substr(at, (next == std::string_view::npos ? text.size() : next) - at);
        at = next;
        const auto locatorText = Attribute(element, "locator");
        if (!locatorText || !locatorText->starts_with(locatorStart) ||
            Attribute(element, "status").value_or("working") != "working")
            continue;
        const PluginLocator locator =
            PluginLocator::FromString(zetcore::string::UTF8to16(Unescape(*locatorText))).ModuleLocator();
        if (!locator.IsEmpty() && (modules.empty() || modules.back() != locator))
            modules.push_back(locator);
    }
    return modules;
}

std::vector<PluginLocator> WorkingVST3ModulesOfFile(const std::wstring& path)
{
    const File file(path);
    try {
        if (file.Exists())
            return WorkingVST3Modules(zetcore::filesupport::FileUtils::ReadFile(file));
    } catch (const std::exception& error) {
        zetcore::debug::TraceLine(1, "zetaudiofilterscan", error.what());
    }
    return {};
}

} // namespace zetaudiofilterscan
