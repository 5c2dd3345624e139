#include "filesupport/paths/FileStatus.h"

#include "filesupport/paths/SharedOpening_win.h"
#include <zetcore/filesupport/handles/SystemError.h>

namespace zetcore::filesupport {

namespace {

std::uint64_t Join(DWORD high, DWORD low)
{
    return (std::uint64_t{high} << 32) | low;
}

bool IsMissing(DWORD error)
{
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_INVALID_NAME;
}

} // namespace

FileStatus ReadFileStatus(const std::filesystem::path& path, std::error_code& error)
{
    // This asks for no access, so that it works on a file that another program has open. Links are followed.
    const Handle file = OpenShared(path, 0);
    if (!file.IsOpen()) {
        error = LastSystemError();
        return {};
    }
    BY_HANDLE_FILE_INFORMATION information{};
    const bool read = ::GetFileInformationByHandle(file.Get(), &information) != 0;
    error = read ? std::error_code{} : LastSystemError();
    if (!read)
        return {};
    FileStatus result;
    result.kind =
        (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? FileKind::Folder : FileKind::Regular;
    result.size = Join(information.nFileSizeHigh, information.nFileSizeLow);
    // The system counts steps of 100 nanoseconds since 1601.
    constexpr std::int64_t stepsUntil1970 = 116'444'736'000'000'000;
    const auto steps = static_cast<std::int64_t>(
        Join(information.ftLastWriteTime.dwHighDateTime, information.ftLastWriteTime.dwLowDateTime));
    result.modificationTime = (steps - stepsUntil1970) * 100;
    return result;
}

std::error_code RemoveFile(const std::filesystem::path& path)
{
    if (::DeleteFileW(SystemPath(path).c_str()) != 0 || IsMissing(::GetLastError()))
        return {};
    return LastSystemError();
}

std::error_code MakePrivateFolder(const std::filesystem::path& path)
{
    // A folder in the user's profile inherits a private access list from it.
    if (::CreateDirectoryW(SystemPath(path).c_str(), nullptr) != 0)
        return {};
    const std::error_code error = LastSystemError();
    std::error_code unreachable;
    const FileStatus present = ReadFileStatus(path, unreachable);
    if (unreachable)
        return error;
    return present.kind == FileKind::Folder ? std::error_code{}
                                            : std::make_error_code(std::errc::not_a_directory);
}

std::error_code RenameToFreeName(const std::filesystem::path& from, const std::filesystem::path& to)
{
    return ::MoveFileExW(SystemPath(from).c_str(), SystemPath(to).c_str(), 0) != 0 ? std::error_code{}
                                                                                   : LastSystemError();
}

} // namespace zetcore::filesupport
