#include "terminal/PluginFile.h"

#include <algorithm>

#include <zetaudiofilterhost/ModuleFiles.h>
#include <zetaudiofilterhost/PluginFormat.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/string/Utf.h>

namespace zetaudiopluginmanager {

namespace {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;
using zetcore::filesupport::FromNativePath;
using zetcore::filesupport::ToNativePath;

bool IsSeparator(wchar_t unit)
{
    return unit == L'/' || unit == static_cast<wchar_t>(std::filesystem::path::preferred_separator);
}

} // namespace

std::wstring AbsolutePath(std::string_view argument)
{
    if (argument.empty())
        return {};
    const std::filesystem::path path = ToNativePath(zetcore::string::UTF8to16(argument));
    std::wstring absolute = FromNativePath(std::filesystem::absolute(path).lexically_normal());
    const std::size_t rootLength = FromNativePath(path.root_path()).size();
    while (absolute.size() > std::max<std::size_t>(rootLength, 1) && IsSeparator(absolute.back()))
        absolute.pop_back();
    return absolute;
}

PluginLocator LocatorOfPath(const std::wstring& absolutePath)
{
    PluginLocator module = zetaudiofilterhost::LocatorOfModuleFile(absolutePath);
    return module.IsEmpty() ? PluginLocator(TechnologyType::Unknown, absolutePath) : module;
}

PluginLocator LocatorOfArgument(const zetaudiofilterhost::PluginModuleInfoManager& registry,
                                const zetaudiopluginhost::BannedPluginManager& bannedList,
                                std::string_view argument)
{
    const PluginLocator module = LocatorOfPath(AbsolutePath(argument));
    if (module.GetTechnologyType() != TechnologyType::Unknown)
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

bool PathExists(const std::wstring& path)
{
    std::error_code ignored;
    return std::filesystem::exists(ToNativePath(path), ignored);
}

bool IsFolder(const std::wstring& path)
{
    std::error_code ignored;
    return std::filesystem::is_directory(ToNativePath(path), ignored);
}

} // namespace zetaudiopluginmanager
