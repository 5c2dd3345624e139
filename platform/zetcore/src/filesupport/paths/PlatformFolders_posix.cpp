#include "filesupport/paths/PlatformFolders.h"

#include <cerrno>
#include <vector>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <zetcore/filesupport/handles/SystemError.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/EnvironmentVariable.h>

#include "filesupport/paths/CheckedPath.h"

namespace zetcore::filesupport {

namespace {

std::wstring AbsoluteFolderVariable(const char* name)
{
    const auto value = utility::EnvironmentVariable(name);
    return value && value->front() == L'/' ? WithoutTrailingSeparators(*value) : std::wstring();
}

bool IsPrivateFolder(const std::wstring& path)
{
    struct stat status
    {};
    return ::stat(ToNativePath(path).c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == ::geteuid() && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

} // namespace

std::wstring FindExecutableFolder()
{
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::wstring() : FromNativePath(program.parent_path());
}

std::wstring FindHomeFolder()
{
    std::wstring home = AbsoluteFolderVariable("HOME");
    if (!home.empty())
        return home;
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr ||
        entry.pw_dir == nullptr)
        return {};
    return string::UTF8to16(entry.pw_dir);
}

std::wstring FindConfigFolder()
{
    const std::wstring config = AbsoluteFolderVariable("XDG_CONFIG_HOME");
    return config.empty() ? FindHomeFolder() + L"/.config" : config;
}

std::wstring FindRuntimeFolder()
{
    // Under sudo the variable may name another user's folder.
    const std::wstring session = AbsoluteFolderVariable("XDG_RUNTIME_DIR");
    if (!session.empty() && IsPrivateFolder(session))
        return session;

    const std::string own = "/tmp/zet-" + std::to_string(::geteuid());
    const std::wstring ownWide = string::UTF8to16(own);
    if (::mkdir(own.c_str(), 0700) != 0 && errno != EEXIST)
        throw file_exception("create folder", ownWide, LastSystemError());
    struct stat status
    {};
    if (::lstat(own.c_str(), &status) != 0)
        throw file_exception("use folder", ownWide, LastSystemError());
    // Anybody can make things in /tmp, so a link or another user's folder there may be a trap.
    if (!S_ISDIR(status.st_mode))
        throw file_exception("use folder", ownWide, std::make_error_code(std::errc::not_a_directory));
    if (status.st_uid != ::geteuid())
        throw file_exception("use folder", ownWide, std::make_error_code(std::errc::permission_denied));
    if ((status.st_mode & 0777) != 0700 && ::chmod(own.c_str(), 0700) != 0)
        throw file_exception("use folder", ownWide, LastSystemError());
    return ownWide;
}

} // namespace zetcore::filesupport
