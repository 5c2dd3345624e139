#include "files/FolderPath.h"

#include <filesystem>

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
