#pragma once

#include <cerrno>

namespace zetaudiofilterscan {

/// Tells of a call that failed with EACCES, if it is the guard of files that refused it. A relative path
/// begins at the folder (a descriptor, or AT_FDCWD). `what` says what the call would have done.
void NoteRefusal(const char* what, int folder, const char* path) noexcept;

/// Looks at what a call returned, and returns that. `errno` stays.
template<typename Result>
Result Noted(Result result, bool failed, const char* what, int folder, const char* path)
{
    if (failed && errno == EACCES) {
        NoteRefusal(what, folder, path);
        errno = EACCES;
    }
    return result;
}

} // namespace zetaudiofilterscan
