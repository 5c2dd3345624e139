#pragma once

#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

namespace zetaudiofilterscan {

/// A descriptor that is readable when the process has ended; -1, with `errno`, when there is none. Nothing
/// else is called, so that a child may do it right after its start.
inline int OpenProcess(pid_t process) noexcept
{
    return static_cast<int>(::syscall(SYS_pidfd_open, process, 0));
}

} // namespace zetaudiofilterscan
