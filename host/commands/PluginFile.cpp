#include "commands/PluginFile.h"

#include <algorithm>
#include <type_traits>

#include <zetcore/string/Utf.h>

namespace zetaudiopluginmanager {

namespace {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;

std::wstring ToWide(const std::filesystem::path& path)
{
    if constexpr (std::is_same_v<std::filesystem::path::value_type, wchar_t>)
        return path.wstring();
    else
        return zetcore::string::UTF8to16(path.string());
}

bool IsSeparator(wchar_t unit)
{
    return unit == L'/' || unit == static_cast<wchar_t>(std::filesystem::path::preferred_separator);
}

} // namespace

std::wstring AbsolutePath(std::string_view argument)
{
    if (argument.empty())
        return {};
    const std::filesystem::path path = ToPath(zetcore::string::UTF8to16(argument));
    std::wstring absolute = ToWide(std::filesystem::absolute(path).lexically_normal());
    const std::size_t rootLength = ToWide(path.root_path()).size();
    while (absolute.size() > std::max<std::size_t>(rootLength, 1) && IsSeparator(absolute.back()))
        absolute.pop_back();
    return absolute;
}

PluginLocator LocatorOfPath(const std::wstring& absolutePath)
{
    if (absolutePath.empty())
        return {};
    constexpr std::wstring_view extension = L".vst3";
    for (std::size_t end = 1; end <= absolutePath.size(); ++end) {
        if (end < absolutePath.size() && !IsSeparator(absolutePath[end]))
            continue;
        const std::wstring_view start(absolutePath.data(), end);
        if (start.size() > extension.size() &&
            zetcore::string::EqualIgnoringCase(start.substr(start.size() - extension.size()), extension))
            return {TechnologyType::VST3, std::wstring(start)};
    }
    return {TechnologyType::VST, absolutePath};
}

PluginLocator LocatorOfArgument(std::string_view argument)
{
    return LocatorOfPath(AbsolutePath(argument));
}

std::filesystem::path ToPath(const std::wstring& path)
{
    if constexpr (std::is_same_v<std::filesystem::path::value_type, wchar_t>)
        return path;
    else
        return zetcore::string::UTF16to8(path);
}

bool PathExists(const std::wstring& path)
{
    std::error_code ignored;
    return std::filesystem::exists(ToPath(path), ignored);
}

bool IsFolder(const std::wstring& path)
{
    std::error_code ignored;
    return std::filesystem::is_directory(ToPath(path), ignored);
}

} // namespace zetaudiopluginmanager
