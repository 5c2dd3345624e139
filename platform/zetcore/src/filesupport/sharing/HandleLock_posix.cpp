#include "filesupport/sharing/HandleLock_posix.h"

#include <cerrno>

#include <sys/file.h>

#include <zetcore/filesupport/handles/SystemError.h>
#include <zetcore/utility/Backoff.h>

namespace zetcore::filesupport {

std::error_code LockWithin(int descriptor, std::chrono::milliseconds limit)
{
    const auto giveUp = std::chrono::steady_clock::now() + limit;
    utility::Backoff pause;
    while (::flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return LastSystemError();
        if (std::chrono::steady_clock::now() >= giveUp)
            return std::make_error_code(std::errc::timed_out);
        pause();
    }
    return {};
}

void Unlock(int descriptor)
{
    ::flock(descriptor, LOCK_UN);
}

} // namespace zetcore::filesupport
