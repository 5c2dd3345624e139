#include "RefusalNote_posix.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <exception>
#include <memory>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "RefusalNotes.h"

namespace zetaudiofilterscan {

namespace {

std::atomic<bool> isNoting{false};
// A plug-in that tries again and again must not fill the log.
std::atomic<int> notesLeft{100};
struct stat errorStream = {};

// A plug-in may have put a file of its own in the place of standard error.
bool HasErrorStream()
{
    struct stat now = {};
    return ::fstat(STDERR_FILENO, &now) == 0 && now.st_dev == errorStream.st_dev &&
           now.st_ino == errorStream.st_ino;
}

std::string ParentOf(const std::string& path)
{
    const auto slash = path.find_last_of('/', path.find_last_not_of('/'));
    return slash == path.npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
}

/// True when the permissions of the file or, when there is none, its folder allow to write. These questions
/// are not answered by the guard.
bool PermissionsAllow(int folder, const std::string& path)
{
    if (::faccessat(folder, path.c_str(), F_OK, AT_EACCESS | AT_SYMLINK_NOFOLLOW) == 0 &&
        ::faccessat(folder, path.c_str(), W_OK, AT_EACCESS) != 0)
        return false;
    return ::faccessat(folder, ParentOf(path).c_str(), W_OK, AT_EACCESS) == 0 ||
           ::faccessat(folder, path.c_str(), W_OK, AT_EACCESS) == 0;
}

std::string Resolved(const std::string& path)
{
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), &std::free);
    return real ? real.get() : "";
}

/// The file's real place: plug-ins find the user's files through links.
std::string RealPath(int folder, const std::string& path)
{
    std::string whole = path;
    if (!path.starts_with('/'))
        whole = (folder == AT_FDCWD ? "./" : "/proc/self/fd/" + std::to_string(folder) + "/") + path;
    if (const std::string real = Resolved(whole); !real.empty())
        return real;
    const std::string parent = Resolved(ParentOf(whole));
    return parent.empty() ? path : parent + "/" + path.substr(path.find_last_of('/') + 1);
}

} // namespace

void NoteRefusals()
{
    if (::fstat(STDERR_FILENO, &errorStream) == 0)
        isNoting = true;
}

void NoteRefusal(const char* what, int folder, const char* path) noexcept
try {
    if (!isNoting || !path || !PermissionsAllow(folder, path) || !HasErrorStream() || notesLeft-- <= 0)
        return;
    std::string line = std::string("zetaudiofilterscan: refused to ") + what + " " + RealPath(folder, path);
    std::ranges::replace_if(
        line, [](char letter) { return static_cast<unsigned char>(letter) < ' '; }, '?');
    line += "\n";
    // One write keeps the line in one piece. What does not get through is lost, like the rest of the output.
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, line.data(), line.size());
} catch (const std::exception&) {
    // The call was refused all the same.
}

} // namespace zetaudiofilterscan
