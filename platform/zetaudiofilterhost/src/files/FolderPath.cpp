#include "files/FolderPath.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include <zetcore/filesupport/paths/NativePath.h>

namespace zetaudiofilterhost {

using zetcore::filesupport::FromNativePath;
using zetcore::filesupport::IsSameFileName;
using zetcore::filesupport::ToNativePath;

namespace {

std::filesystem::path Normalised(const std::wstring& path)
{
    // Made anew, because GCC's library leaves the parts of a path that it makes preferred as they were.
    const std::filesystem::path given(ToNativePath(path).make_preferred().native());
    std::filesystem::path result;
    for (const std::filesystem::path& part : given)
        if (!part.empty() && part != ".")
            result /= part;
    return result;
}

} // namespace

std::wstring NormalisedFolderPath(const std::wstring& path)
{
    return FromNativePath(Normalised(path));
}

std::wstring AbsoluteFolderPath(const std::wstring& path)
{
    if (path.empty())
        return path;
    std::filesystem::path native = ToNativePath(path);
    std::error_code error;
    // A path from the root without a drive stays, because it was written so on another system.
    if (!native.has_root_directory())
        if (std::filesystem::path absolute = std::filesystem::absolute(native, error); !error)
            native = std::move(absolute);
    return NormalisedFolderPath(FromNativePath(native));
}

bool IsSameFolderPath(const std::wstring& left, const std::wstring& right)
{
    return IsInsideFolder(left, right) && IsInsideFolder(right, left);
}

bool IsInsideFolder(const std::wstring& path, const std::wstring& folder)
{
    const std::filesystem::path inner = Normalised(path);
    const std::filesystem::path outer = Normalised(folder);
    if (outer.empty())
        return false;
    auto innerPart = inner.begin();
    for (const std::filesystem::path& part : outer) {
        if (innerPart == inner.end() || !IsSameFileName(FromNativePath(*innerPart), FromNativePath(part)))
            return false;
        ++innerPart;
    }
    return true;
}

} // namespace zetaudiofilterhost
