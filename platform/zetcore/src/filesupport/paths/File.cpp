#include <zetcore/filesupport/paths/File.h>

#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/string/Utf.h>

#include "filesupport/paths/CheckedPath.h"
#include "filesupport/paths/FileStatus.h"

namespace zetcore::filesupport {

namespace {

std::wstring Join(std::wstring folder, const std::wstring& name)
{
    if (!folder.empty() && folder.back() != pathSeparator)
        folder.push_back(pathSeparator);
    return folder + name;
}

FileStatus StatusOf(const std::wstring& path)
{
    constexpr const char* operation = "look at";
    const std::filesystem::path native = ToCheckedPath(operation, path);
    std::error_code error;
    const FileStatus status = ReadFileStatus(native, error);
    if (error)
        throw file_exception(operation, path, error);
    return status;
}

} // namespace

File::File(std::wstring fullPath) : path(std::move(fullPath)) {}

File::File(const Dir& folder, const std::wstring& name) : path(Join(folder.FullPath(), name)) {}

bool File::Exists() const
{
    if (!NamesAFile(path))
        return false;
    std::error_code error;
    ReadFileStatus(ToNativePath(path), error);
    return !error;
}

void File::Delete() const
{
    constexpr const char* operation = "delete";
    if (debug::FaultsAreOn())
        if (const std::error_code error = debug::FaultError("delete." + string::UTF16to8(GetTitle())))
            throw file_exception(operation, path, error);
    if (const std::error_code error = RemoveFile(ToCheckedPath(operation, path)))
        throw file_exception(operation, path, error);
}

std::string File::FullPathUTF8() const
{
    return string::UTF16to8(path);
}

std::wstring File::GetTitle() const
{
    return FromNativePath(ToNativePath(WithoutTrailingSeparators(path)).filename());
}

Dir File::GetParent() const
{
    return Dir(FromNativePath(ToNativePath(WithoutTrailingSeparators(path)).parent_path()));
}

std::uint64_t File::Size() const
{
    return StatusOf(path).size;
}

std::int64_t File::ModificationTime() const
{
    return StatusOf(path).modificationTime;
}

} // namespace zetcore::filesupport
