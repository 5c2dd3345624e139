#include "filesupport/paths/DriveState.h"

#include "filesupport/paths/FileStatus.h"

namespace zetcore::filesupport {

namespace {

bool IsThere(const std::filesystem::path& path)
{
    std::error_code error;
    ReadFileStatus(path, error);
    return !error;
}

/// Folders in which each entry is a drive, or a user's drives.
bool HoldsDrives(const std::filesystem::path& folder)
{
    return folder == "/mnt" || folder == "/media" || folder == "/run/media" ||
           folder.parent_path() == "/media" || folder.parent_path() == "/run/media";
}

} // namespace

bool IsDriveAway(const std::filesystem::path& folder, const std::error_code& error)
{
    if (error != std::errc::no_such_file_or_directory && error != std::errc::not_a_directory &&
        error != std::errc::filename_too_long && error != std::errc::too_many_symbolic_link_levels)
        return true;
    // A drive that is away has no folder where it would be mounted.
    std::filesystem::path missing = folder;
    while (missing.has_relative_path() && !IsThere(missing.parent_path()))
        missing = missing.parent_path();
    return HoldsDrives(missing.parent_path()) || HoldsDrives(missing);
}

} // namespace zetcore::filesupport
