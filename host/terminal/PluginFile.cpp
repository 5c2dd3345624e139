#include "terminal/PluginFile.h"

#include <algorithm>
#include <type_traits>

#include <zetaudiofilterhost/ModuleFiles.h>
#include <zetaudiofilterhost/PluginFormat.h>
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
    PluginLocator module = zetaudiofilterhost::LocatorOfModuleFile(absolutePath);
    return module.IsEmpty() ? PluginLocator(TechnologyType::None, absolutePath) : module;
}

PluginLocator LocatorOfArgument(const zetaudiofilterhost::PluginModuleInfoManager& registry,
                                const zetaudiopluginhost::BannedPluginManager& bannedList,
                                std::string_view argument)
{
    const PluginLocator module = LocatorOfPath(AbsolutePath(argument));
    if (module.GetTechnologyType() != TechnologyType::None)
        return module;
    for (const zetaudiofilterhost::PluginFormat& format : zetaudiofilterhost::PluginFormats()) {
        PluginLocator known(format.type, module.GetPath());
        if (!registry.FindModule(known).empty() || bannedList.IsBanned(known))
            return known;
    }
    return module;
}

std::string ModuleExtensions()
{
    std::string extensions;
    for (const zetaudiofilterhost::PluginFormat& format : zetaudiofilterhost::PluginFormats())
        if (format.IsOnThisPlatform())
            extensions += (extensions.empty() ? "" : ", ") +
                          zetcore::string::UTF16to8(std::wstring(format.files.extension));
    return extensions;
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
