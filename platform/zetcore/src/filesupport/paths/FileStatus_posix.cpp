#include "filesupport/paths/FileStatus.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zetcore/filesupport/handles/SystemError.h>

namespace zetcore::filesupport {

FileStatus ReadFileStatus(const std::filesystem::path& path, std::error_code& error)
{
    struct stat status
    {};
    if (::stat(path.c_str(), &status) != 0) {
        error = LastSystemError();
        return {};
    }
    error.clear();
    FileStatus result;
    result.kind = S_ISREG(status.st_mode)   ? FileKind::Regular
                  : S_ISDIR(status.st_mode) ? FileKind::Folder
                                            : FileKind::Other;
    result.size = static_cast<std::uint64_t>(status.st_size);
    result.modificationTime =
        std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + std::int64_t{status.st_mtim.tv_nsec};
    return result;
}

std::error_code RemoveFile(const std::filesystem::path& path)
{
    if (::unlink(path.c_str()) == 0 || errno == ENOENT || errno == ENOTDIR)
        return {};
    return LastSystemError();
}

std::error_code MakePrivateFolder(const std::filesystem::path& path)
{
    if (::mkdir(path.c_str(), 0700) == 0)
        return {};
    std::error_code error = LastSystemError();
    std::error_code unreachable;
    // This look is made after every error, and not only after "exists": a read-only file system may report
    // that it is read-only for a folder that is there.
    const FileStatus present = ReadFileStatus(path, unreachable);
    if (unreachable)
        return error;
    return present.kind == FileKind::Folder ? std::error_code{}
                                            : std::make_error_code(std::errc::not_a_directory);
}

std::error_code RenameToFreeName(const std::filesystem::path& from, const std::filesystem::path& to)
{
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return {};
    if (errno != EINVAL && errno != ENOSYS)
        return LastSystemError();
    // This file system has no such rename, so a second look has to do.
    struct stat status
    {};
    if (::lstat(to.c_str(), &status) == 0)
        return std::make_error_code(std::errc::file_exists);
    return ::rename(from.c_str(), to.c_str()) == 0 ? std::error_code{} : LastSystemError();
}

} // namespace zetcore::filesupport
