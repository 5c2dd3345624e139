#include "filesupport/content/FileReplacement.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/filesupport/handles/Descriptor.h>
#include <zetcore/filesupport/handles/SystemError.h>
#include <zetcore/filesupport/paths/FileException.h>

#include "filesupport/paths/CheckedPath.h"

namespace zetcore::filesupport {

namespace {

constexpr const char* writeOperation = "write";

std::filesystem::path FolderOf(const std::filesystem::path& file)
{
    const std::filesystem::path folder = file.parent_path();
    return folder.empty() ? std::filesystem::path(".") : folder;
}

bool SwapNames(const std::filesystem::path& first, const std::filesystem::path& second)
{
    return ::renameat2(AT_FDCWD, first.c_str(), AT_FDCWD, second.c_str(), RENAME_EXCHANGE) == 0;
}

/// One replacement of a file. When its temporary file does not become the real one, the destructor deletes
/// it.
class Replacement
{
  public:
    Replacement(const std::filesystem::path& namedFile, const std::wstring& nameForErrors)
        : shownName(nameForErrors), target(FollowLinks(namedFile)), folder(FolderOf(target))
    {
        struct stat found
        {};
        if (::stat(target.c_str(), &found) == 0)
            CheckReplaceable(found);
        else if (errno != ENOENT)
            Fail(LastSystemError());
        FailOnFault(".open");
        temporary = folder / MakeTemporaryName();
        file =
            Descriptor(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600));
        if (!file.IsOpen())
            Fail(LastSystemError());
        written = true;
    }

    ~Replacement()
    {
        if (written)
            ::unlink(temporary.c_str());
    }

    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    void Write(std::string_view bytes, Durability durability)
    {
        FailOnFault(".write");
        if (existing)
            KeepOwnerAndPermissions();
        if (const std::error_code error = file.WriteWhole(bytes))
            Fail(error);
        if (durability == Durability::PowerCut && ::fsync(file.Get()) != 0)
            Fail(LastSystemError());
        if (!file.Close())
            Fail(LastSystemError());
    }

    std::string FaultPlace(const char* step) const { return "write." + target.filename().string() + step; }

    void Commit(Durability durability)
    {
        FailOnFault(".rename");
        // A swap of the two names is as atomic as a rename over the target. But the file system does not
        // write the new content out first because of it, as it does before such a rename. The destructor then
        // deletes the old content.
        if (existing && durability == Durability::Handover && SwapNames(temporary, target))
            return;
        if (::rename(temporary.c_str(), target.c_str()) != 0)
            Fail(LastSystemError());
        written = false;
        if (durability == Durability::PowerCut)
            SynchronizeFolder();
    }

  private:
    void FailOnFault(const char* step) const
    {
        if (!debug::FaultsAreOn())
            return;
        if (const std::error_code error = debug::FaultError(FaultPlace(step)))
            Fail(error);
    }

    [[noreturn]] void Fail(std::error_code cause) const
    {
        throw file_exception(writeOperation, shownName, cause);
    }

    std::filesystem::path FollowLinks(std::filesystem::path path) const
    {
        // The system itself follows as many links.
        constexpr int mostLinks = 40;
        for (int links = 0; links < mostLinks; ++links) {
            char to[PATH_MAX];
            const ssize_t length = ::readlink(path.c_str(), to, sizeof to);
            if (length < 0)
                return path;
            path = FolderOf(path) / std::string_view(to, static_cast<std::size_t>(length));
        }
        Fail(std::make_error_code(std::errc::too_many_symbolic_link_levels));
    }

    void CheckReplaceable(const struct stat& found)
    {
        if (S_ISDIR(found.st_mode))
            Fail(std::make_error_code(std::errc::is_a_directory));
        if (!S_ISREG(found.st_mode))
            Fail(std::make_error_code(std::errc::not_supported));
        // A rename needs rights on the folder only. A file that its owner made read-only must stay as it is
        // all the same.
        if (::access(target.c_str(), W_OK) != 0)
            Fail(LastSystemError());
        existing = found;
    }

    void KeepOwnerAndPermissions()
    {
        // A program of the administrator must not take the user's file away. For other users this cannot
        // succeed, and need not.
        const bool owned = existing->st_uid == ::geteuid() && existing->st_gid == ::getegid();
        mode_t mode = existing->st_mode & 0777;
        if (!owned && ::fchown(file.Get(), existing->st_uid, existing->st_gid) != 0)
            mode &= ~static_cast<mode_t>(S_IRWXG);
        if (::fchmod(file.Get(), mode) != 0)
            Fail(LastSystemError());
    }

    void SynchronizeFolder() const
    {
        const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        // Some file systems cannot synchronise a folder and say so with EINVAL.
        if (!opened.IsOpen() || (::fsync(opened.Get()) != 0 && errno != EINVAL))
            Fail(LastSystemError());
    }

    const std::wstring& shownName;
    std::filesystem::path target;
    std::filesystem::path folder;
    std::filesystem::path temporary;
    std::optional<struct stat> existing;
    Descriptor file;
    bool written = false;
};

} // namespace

void ReplaceWholeFile(const std::wstring& path, std::string_view bytes, Durability durability)
{
    Replacement replacement(ToCheckedPath(writeOperation, path), path);
    replacement.Write(bytes, durability);
    replacement.Commit(durability);
    if (debug::FaultsAreOn())
        debug::FaultPoint(replacement.FaultPlace(".done"));
}

} // namespace zetcore::filesupport
