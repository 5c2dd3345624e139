#pragma once

#include <filesystem>
#include <string>

#include <windows.h>

#include <zetcore/filesupport/handles/Handle.h>
#include <zetcore/filesupport/paths/LongPath.h>

namespace zetcore::filesupport {

/// Returns the form of the path that the system's functions are given. The standard library does not know it.
inline std::wstring SystemPath(const std::filesystem::path& path)
{
    return LongForm(path.native());
}

/// True when the cause of an error may be another program that has the file open for a moment: a reader, a
/// writer that replaces it, a search indexer, a virus scanner.
bool MayPass(DWORD error) noexcept;

/// Opens a file for reading, or with an access of 0 for a look at it, even when others have it open. It tries
/// again for a short time, because the file may just be being replaced. When the result is not open,
/// `GetLastError` tells why.
Handle OpenShared(const std::filesystem::path& path, DWORD access);

} // namespace zetcore::filesupport
