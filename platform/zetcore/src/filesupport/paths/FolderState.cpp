#include <zetcore/filesupport/paths/FolderState.h>

#include <zetcore/filesupport/paths/NativePath.h>

#include "filesupport/paths/DriveState.h"
#include "filesupport/paths/FileStatus.h"

namespace zetcore::filesupport {

FolderState LookAtFolder(const std::wstring& path)
{
    const std::filesystem::path folder = ToNativePath(path);
    std::error_code error;
    const FileStatus status = ReadFileStatus(folder, error);
    if (!error)
        return status.kind == FileKind::Folder ? FolderState::There : FolderState::NotFound;
    // A folder that may not be looked at is there.
    if (error == std::errc::permission_denied)
        return FolderState::There;
    return IsDriveAway(folder, error) ? FolderState::Offline : FolderState::NotFound;
}

} // namespace zetcore::filesupport
