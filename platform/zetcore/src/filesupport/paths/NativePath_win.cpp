#include <zetcore/filesupport/paths/NativePath.h>

#include <windows.h>

#include <zetcore/filesupport/handles/Handle.h>
#include <zetcore/filesupport/handles/SystemError.h>

#include "filesupport/paths/SharedOpening_win.h"
#include <zetcore/string/Utf.h>

namespace zetcore::filesupport {

std::filesystem::path ToNativePath(const std::wstring& text)
{
    return text;
}

std::wstring FromNativePath(const std::filesystem::path& path)
{
    return path.native();
}

bool IsSameFileName(std::wstring_view left, std::wstring_view right)
{
    return string::EqualIgnoringCase(left, right);
}

bool IsLink(const std::filesystem::directory_entry& entry)
{
    const DWORD attributes = ::GetFileAttributesW(SystemPath(entry.path()).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

bool IsRefusal(const std::error_code& error)
{
    // The standard library's own functions give error numbers of the C library, and ours give the system's.
    if (error.category() == std::generic_category())
        return error && error != std::errc::no_such_file_or_directory && error != std::errc::not_a_directory;
    switch (error.value()) {
    case ERROR_SUCCESS:
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_NOT_READY:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_INVALID_NAME:
    case ERROR_CANT_RESOLVE_FILENAME:
        return false;
    default:
        return true;
    }
}

std::optional<std::filesystem::file_type> KindBehindLongPath(const std::filesystem::path& path)
{
    // Behind a folder's path come a separator and the star that stands for all of its names.
    constexpr std::size_t shortEnough = MAX_PATH - 12;
    const DWORD attributes = path.native().size() > shortEnough
                                 ? ::GetFileAttributesW(SystemPath(path).c_str())
                                 : INVALID_FILE_ATTRIBUTES;
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return std::nullopt;
    using Kind = std::filesystem::file_type;
    return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? Kind::directory : Kind::regular;
}

std::filesystem::path ResolvedPath(const std::filesystem::path& path, std::error_code& error)
{
    // The standard library's canonical does not follow junctions here.
    const Handle opened(::CreateFileW(SystemPath(path).c_str(), FILE_READ_ATTRIBUTES,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!opened.IsOpen()) {
        error = LastSystemError();
        return {};
    }
    std::wstring text(512, L'\0');
    for (;;) {
        const DWORD length = ::GetFinalPathNameByHandleW(
            opened.Get(), text.data(), static_cast<DWORD>(text.size()), FILE_NAME_NORMALIZED);
        if (length == 0) {
            error = LastSystemError();
            return {};
        }
        const bool fits = length < text.size();
        text.resize(length);
        if (fits)
            break;
    }
    error.clear();
    return text;
}

} // namespace zetcore::filesupport
