#include "filesupport/paths/DriveState.h"

#include <windows.h>

namespace zetcore::filesupport {

bool IsDriveAway(const std::filesystem::path& folder, const std::error_code& error)
{
    switch (static_cast<DWORD>(error.value())) {
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_NETWORK_UNREACHABLE:
    case ERROR_HOST_UNREACHABLE:
    case ERROR_NETNAME_DELETED:
    case ERROR_DEV_NOT_EXIST:
    case ERROR_NOT_READY:
    case ERROR_UNEXP_NET_ERR:
    case ERROR_REM_NOT_LIST:
    case ERROR_CONNECTION_UNAVAIL:
    case ERROR_NO_NETWORK:
    case ERROR_SEM_TIMEOUT:
        return true;
    default:
        break;
    }
    const std::filesystem::path root = folder.root_path();
    return !root.empty() && ::GetDriveTypeW(root.c_str()) == DRIVE_NO_ROOT_DIR;
}

} // namespace zetcore::filesupport
