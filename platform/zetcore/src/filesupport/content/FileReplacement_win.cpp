#include "filesupport/content/FileReplacement.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <vector>

#include <windows.h>

#include <zetcore/filesupport/handles/Handle.h>
#include <zetcore/filesupport/handles/SystemError.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/string/Utf.h>
#include <zetcore/utility/Backoff.h>

#include "filesupport/paths/CheckedPath.h"
#include "filesupport/paths/FileStatus.h"
#include "filesupport/paths/SharedOpening_win.h"

namespace zetcore::filesupport {

namespace {

constexpr const char* writeOperation = "write";

/// Returns the file that a link leads to, or the path itself when it is no link or leads nowhere.
std::filesystem::path FollowLinks(const std::filesystem::path& path)
{
    const DWORD attributes = ::GetFileAttributesW(SystemPath(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        return path;
    const Handle file(::CreateFileW(SystemPath(path).c_str(), 0,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!file.IsOpen())
        return path;
    std::wstring target(32768, L'\0');
    const DWORD length =
        ::GetFinalPathNameByHandleW(file.Get(), target.data(), static_cast<DWORD>(target.size()), 0);
    if (length == 0 || length >= target.size())
        return path;
    target.resize(length);
    return target;
}

/// Moves an open file onto another one in one step, even while readers have that one open. Systems before
/// Windows 10 and some file systems cannot do it.
bool MoveOntoOpenFile(HANDLE file, const std::filesystem::path& target)
{
    const std::wstring name = SystemPath(target);
    std::vector<std::max_align_t> block(
        (sizeof(FILE_RENAME_INFO) + name.size() * sizeof(wchar_t)) / sizeof(std::max_align_t) + 1);
    auto* const rename = reinterpret_cast<FILE_RENAME_INFO*>(block.data());
    rename->Flags = FILE_RENAME_FLAG_REPLACE_IF_EXISTS | FILE_RENAME_FLAG_POSIX_SEMANTICS;
    rename->FileNameLength = static_cast<DWORD>(name.size() * sizeof(wchar_t));
    std::copy(name.begin(), name.end(), rename->FileName);
    // The headers name this value only for versions of Windows 10 after the first.
    constexpr auto renameInfoEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);
    return ::SetFileInformationByHandle(file, renameInfoEx, rename,
                                        static_cast<DWORD>(block.size() * sizeof(std::max_align_t))) != 0;
}

/// Copies the access list, which says who may use a file, as far as this user may do that.
void CopyAccess(const std::filesystem::path& from, const std::filesystem::path& to)
{
    DWORD size = 0;
    ::GetFileSecurityW(SystemPath(from).c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<std::max_align_t> access(size / sizeof(std::max_align_t) + 1);
    if (::GetFileSecurityW(SystemPath(from).c_str(), DACL_SECURITY_INFORMATION, access.data(), size, &size) !=
        0)
        ::SetFileSecurityW(SystemPath(to).c_str(), DACL_SECURITY_INFORMATION, access.data());
}

class TemporaryFile
{
  public:
    explicit TemporaryFile(std::filesystem::path temporaryPath)
        : path(std::move(temporaryPath)),
          file(::CreateFileW(SystemPath(path).c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW,
                             FILE_ATTRIBUTE_NORMAL, nullptr))
    {
        created = file.IsOpen();
    }

    ~TemporaryFile()
    {
        file.Close();
        if (created)
            ::DeleteFileW(SystemPath(path).c_str());
    }

    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    bool IsOpen() const { return file.IsOpen(); }

    std::error_code Write(std::string_view bytes, Durability durability)
    {
        if (const std::error_code error = file.WriteWhole(bytes))
            return error;
        if (durability == Durability::PowerCut && ::FlushFileBuffers(file.Get()) == 0)
            return LastSystemError();
        return {};
    }

    std::error_code MoveTo(const std::filesystem::path& target, Durability durability)
    {
        if (const DWORD attributes = ::GetFileAttributesW(SystemPath(target).c_str());
            attributes != INVALID_FILE_ATTRIBUTES) {
            CopyAccess(target, path);
            ::SetFileAttributesW(SystemPath(path).c_str(), attributes);
        }
        if (MoveOntoOpenFile(file.Get(), target)) {
            created = false;
            return {};
        }
        file.Close();
        const DWORD flags =
            MOVEFILE_REPLACE_EXISTING | (durability == Durability::PowerCut ? MOVEFILE_WRITE_THROUGH : 0);
        const auto giveUp = std::chrono::steady_clock::now() + std::chrono::seconds(2);
        utility::Backoff pause;
        for (;;) {
            if (::MoveFileExW(SystemPath(path).c_str(), SystemPath(target).c_str(), flags) != 0) {
                created = false;
                return {};
            }
            const DWORD error = ::GetLastError();
            if (!MayPass(error) || std::chrono::steady_clock::now() > giveUp)
                return {static_cast<int>(error), std::system_category()};
            pause();
        }
    }

  private:
    std::filesystem::path path;
    Handle file;
    bool created = false;
};

} // namespace

void ReplaceWholeFile(const std::wstring& path, std::string_view bytes, Durability durability)
{
    const std::filesystem::path target = FollowLinks(ToCheckedPath(writeOperation, path));
    std::error_code missing;
    if (ReadFileStatus(target, missing).kind == FileKind::Folder && !missing)
        throw file_exception(writeOperation, path, std::make_error_code(std::errc::is_a_directory));
    const DWORD attributes = ::GetFileAttributesW(SystemPath(target).c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0)
        throw file_exception(writeOperation, path, std::make_error_code(std::errc::permission_denied));

    TemporaryFile temporary(target.parent_path() / string::AsciiToUTF16(MakeTemporaryName()));
    if (!temporary.IsOpen())
        throw file_exception(writeOperation, path, LastSystemError());
    if (const std::error_code error = temporary.Write(bytes, durability))
        throw file_exception(writeOperation, path, error);
    if (const std::error_code error = temporary.MoveTo(target, durability))
        throw file_exception(writeOperation, path, error);
}

} // namespace zetcore::filesupport
