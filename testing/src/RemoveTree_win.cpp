#include "RemoveTree.h"

#include <string>
#include <string_view>

#include <windows.h>

namespace zettesting {

namespace {

/// The standard library cannot list folders behind long paths.
void RemoveInside(const std::wstring& folder)
{
    WIN32_FIND_DATAW entry{};
    const HANDLE search = ::FindFirstFileW((folder + L"\\*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return;
    do {
        const std::wstring_view name = entry.cFileName;
        if (name == L"." || name == L"..")
            continue;
        const std::wstring path = folder + L"\\" + entry.cFileName;
        const DWORD attributes = entry.dwFileAttributes;
        if ((attributes & FILE_ATTRIBUTE_READONLY) != 0)
            ::SetFileAttributesW(path.c_str(), attributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
        if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            ::DeleteFileW(path.c_str());
            continue;
        }
        if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
            RemoveInside(path);
        ::RemoveDirectoryW(path.c_str());
    } while (::FindNextFileW(search, &entry));
    ::FindClose(search);
}

} // namespace

void RemoveTree(const std::filesystem::path& folder)
{
    // In this form paths have no limit.
    const std::wstring path =
        L"\\\\?\\" + std::filesystem::absolute(folder).lexically_normal().make_preferred().native();
    RemoveInside(path);
    ::RemoveDirectoryW(path.c_str());
}

} // namespace zettesting
