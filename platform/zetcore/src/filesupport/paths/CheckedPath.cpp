#include "filesupport/paths/CheckedPath.h"

#include <zetcore/filesupport/paths/FileException.h>

namespace zetcore::filesupport {

std::filesystem::path ToCheckedPath(const std::string& operation, const std::wstring& path)
{
    if (!NamesAFile(path))
        throw file_exception(operation, path,
                             std::make_error_code(path.empty() ? std::errc::no_such_file_or_directory
                                                               : std::errc::invalid_argument));
    return ToNativePath(path);
}

std::wstring WithoutTrailingSeparators(std::wstring folder)
{
    const std::size_t rootLength = FromNativePath(ToNativePath(folder).root_path()).size();
    while (folder.size() > rootLength && (folder.back() == L'/' || folder.back() == pathSeparator))
        folder.pop_back();
    return folder;
}

} // namespace zetcore::filesupport
