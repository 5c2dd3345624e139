#pragma once

#include <cstdint>
#include <filesystem>
#include <system_error>

namespace zetcore::filesupport {

enum class FileKind
{
    Regular,
    Folder,
    /// A device, a pipe, a socket.
    Other,
};

struct FileStatus
{
    FileKind kind = FileKind::Other;
    std::uint64_t size = 0;
    /// Nanoseconds since 1970, UTC.
    std::int64_t modificationTime = 0;
};

/// Looks at a file or folder, or at what a link points at. Sets `error` when nothing is there or it cannot be
/// reached.
FileStatus ReadFileStatus(const std::filesystem::path& path, std::error_code& error);

/// Removes a file, or a link itself. A file that is not there is no error.
std::error_code RemoveFile(const std::filesystem::path& path);

/// Makes one folder, private to the user. One that is there already is no error.
std::error_code MakePrivateFolder(const std::filesystem::path& path);

/// Renames, but never onto another file, which is `errc::file_exists`.
std::error_code RenameToFreeName(const std::filesystem::path& from, const std::filesystem::path& to);

} // namespace zetcore::filesupport
