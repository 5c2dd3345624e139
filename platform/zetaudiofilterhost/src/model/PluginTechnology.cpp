#include <zetaudiofilterhost/PluginTechnology.h>

#include <algorithm>

#include "files/FolderPath.h"

namespace zetaudiofilterhost {

namespace {

void AppendNew(std::vector<std::wstring>& folders, const std::vector<std::wstring>& paths)
{
    for (const std::wstring& path : paths) {
        std::wstring folder = AbsoluteFolderPath(path);
        const auto isSame = [&folder](const std::wstring& other) { return IsSameFolderPath(other, folder); };
        if (!folder.empty() && std::none_of(folders.begin(), folders.end(), isSame))
            folders.push_back(std::move(folder));
    }
}

} // namespace

PluginTechnology::PluginTechnology(TechnologyType technologyType) : type(technologyType) {}

void PluginTechnology::AddPluginDirectories(const std::vector<std::wstring>& paths)
{
    const std::size_t before = directories.size();
    AppendNew(directories, paths);
    if (directories.size() != before)
        directoriesChanged(shared_from_this());
}

void PluginTechnology::RemovePluginDirectories(const std::vector<std::wstring>& paths)
{
    const auto isGiven = [&paths](const std::wstring& folder) {
        return std::any_of(paths.begin(), paths.end(), [&folder](const std::wstring& path) {
            return IsSameFolderPath(AbsoluteFolderPath(path), folder);
        });
    };
    if (std::erase_if(directories, isGiven) > 0)
        directoriesChanged(shared_from_this());
}

void PluginTechnology::SetPluginDirectories(const std::vector<std::wstring>& paths)
{
    std::vector<std::wstring> folders;
    AppendNew(folders, paths);
    if (folders == directories)
        return;
    directories = std::move(folders);
    directoriesChanged(shared_from_this());
}

} // namespace zetaudiofilterhost
