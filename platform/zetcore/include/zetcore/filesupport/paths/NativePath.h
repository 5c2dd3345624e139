#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include <zetcore/Export.h>

/// Conversions between the host's wide strings and the system's own paths, and questions about those paths.
/// The conversions are exact in both directions. Any thread.
namespace zetcore::filesupport {

ZETCORE_API std::filesystem::path ToNativePath(const std::wstring& text);
ZETCORE_API std::wstring FromNativePath(const std::filesystem::path& path);
/// True when the file system takes two names of path components, or two extensions, for the same.
ZETCORE_API bool IsSameFileName(std::wstring_view left, std::wstring_view right);

/// True for an entry that leads elsewhere, which is a symbolic link or a junction.
ZETCORE_API bool IsLink(const std::filesystem::directory_entry& entry);
/// True for an error that says that something is there and cannot be looked at. An error that says that there
/// is nothing, or that the drive is away, is an ordinary answer.
ZETCORE_API bool IsRefusal(const std::error_code& error);
/// The kind of what is behind a path that is too long for the standard library, which says that nothing is
/// there. Nothing for every other path.
ZETCORE_API std::optional<std::filesystem::file_type> KindBehindLongPath(const std::filesystem::path& path);
/// Returns the path with every link followed. When it leads nowhere, the result is empty and the error is
/// set.
ZETCORE_API std::filesystem::path ResolvedPath(const std::filesystem::path& path, std::error_code& error);

} // namespace zetcore::filesupport
