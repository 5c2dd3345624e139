#include <zetcore/filesupport/paths/Dir.h>

#include <algorithm>
#include <mutex>

#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/utility/ClientName.h>

#include "filesupport/paths/CheckedPath.h"
#include "filesupport/paths/FileStatus.h"
#include "filesupport/paths/PlatformFolders.h"
#include "utility/Immortal.h"

namespace zetcore::filesupport {

namespace {

struct ChosenPrefDir
{
    std::mutex mutex;
    std::wstring path;
};

std::error_code CreateWithParents(const std::filesystem::path& folder)
{
    const std::error_code error = MakePrivateFolder(folder);
    if (error != std::errc::no_such_file_or_directory)
        return error;
    const std::filesystem::path parent = folder.parent_path();
    if (parent.empty() || parent == folder)
        return error;
    if (const std::error_code parentError = CreateWithParents(parent))
        return parentError;
    return MakePrivateFolder(folder);
}

std::filesystem::path Normalised(const std::filesystem::path& path)
{
    std::error_code error;
    std::filesystem::path absolute = std::filesystem::absolute(path, error);
    if (error)
        absolute = path;
    // Behind a link, ".." is not the folder that stands before it in the path. So the real folders are asked.
    if (std::find(absolute.begin(), absolute.end(), std::filesystem::path("..")) != absolute.end()) {
        const std::filesystem::path real = std::filesystem::weakly_canonical(absolute, error);
        if (!error)
            return real;
    }
    return absolute.lexically_normal();
}

} // namespace

std::wstring FolderNameOfClient(const std::wstring& client)
{
    constexpr std::wstring_view refused = L"<>:\"/\\|?*";
    std::wstring name = client;
    for (wchar_t& unit : name) {
        if (std::char_traits<wchar_t>::to_int_type(unit) < 0x20 ||
            refused.find(unit) != std::wstring_view::npos)
            unit = L'_';
    }
    // Windows drops dots and spaces at the end, and "." and ".." are no names.
    for (std::size_t end = name.size(); end > 0 && (name[end - 1] == L'.' || name[end - 1] == L' '); --end)
        name[end - 1] = L'_';
    return name.empty() ? L"_" : name;
}

Dir::Dir(std::wstring folderPath) : path(std::move(folderPath)) {}

Dir Dir::PrefDir()
{
    std::wstring chosen;
    {
        auto& state = utility::Immortal<ChosenPrefDir>();
        const std::lock_guard lock(state.mutex);
        chosen = state.path;
    }
    if (chosen.empty())
        chosen = FindConfigFolder() + pathSeparator + FolderNameOfClient(utility::GetClientName());
    const Dir folder(std::move(chosen));
    if (!folder.Exists() && NamesAFile(folder.path))
        CreateWithParents(ToNativePath(folder.path));
    return folder;
}

void Dir::SetPrefDir(const std::wstring& newPath)
{
    // The path is made absolute now, because the current folder may change later.
    std::wstring absolute = Dir(newPath).FullPath();
    auto& state = utility::Immortal<ChosenPrefDir>();
    const std::lock_guard lock(state.mutex);
    state.path = std::move(absolute);
}

bool Dir::Exists() const
{
    if (!NamesAFile(path))
        return false;
    std::error_code error;
    const FileStatus status = ReadFileStatus(ToNativePath(path), error);
    return !error && status.kind == FileKind::Folder;
}

void Dir::Create() const
{
    constexpr const char* operation = "create folder";
    ToCheckedPath(operation, path);
    if (const std::error_code error = CreateWithParents(ToNativePath(FullPath())))
        throw file_exception(operation, path, error);
}

std::wstring Dir::FullPath() const
{
    if (!NamesAFile(path))
        return path;
    return WithoutTrailingSeparators(FromNativePath(Normalised(ToNativePath(path))));
}

} // namespace zetcore::filesupport
