#include "filesupport/paths/SharedOpening_win.h"

#include <chrono>

#include <zetcore/utility/Backoff.h>

namespace zetcore::filesupport {

bool MayPass(DWORD error) noexcept
{
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION || error == ERROR_ACCESS_DENIED;
}

Handle OpenShared(const std::filesystem::path& path, DWORD access)
{
    const auto giveUp = std::chrono::steady_clock::now() + std::chrono::milliseconds(500);
    utility::Backoff pause;
    for (;;) {
        Handle file(::CreateFileW(SystemPath(path).c_str(), access,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
        if (file.IsOpen())
            return file;
        const DWORD error = ::GetLastError();
        if (!MayPass(error) || std::chrono::steady_clock::now() > giveUp) {
            ::SetLastError(error);
            return file;
        }
        pause();
    }
}

} // namespace zetcore::filesupport
