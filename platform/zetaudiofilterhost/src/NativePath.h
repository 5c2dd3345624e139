#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

/// Between the wide strings of the host and the system's own paths, exact in both directions.
namespace zetaudiofilterhost {

std::filesystem::path ToNativePath(const std::wstring& text);
std::wstring FromNativePath(const std::filesystem::path& path);
/// True when two names of path components, or two extensions, are one to the file system.
bool IsSameFileName(std::wstring_view left, std::wstring_view right);

/// True for an entry that leads elsewhere: a symbolic link, a junction.
bool IsLink(const std::filesystem::directory_entry& entry);
/// Something is there that may not be looked at, or cannot be; an error that says that there is nothing, or
/// that its drive is away, is an ordinary answer.
bool IsRefusal(const std::error_code& error);
/// The path with every link followed; empty, and the error set, when it leads nowhere.
std::filesystem::path ResolvedPath(const std::filesystem::path& path, std::error_code& error);

} // namespace zetaudiofilterhost
