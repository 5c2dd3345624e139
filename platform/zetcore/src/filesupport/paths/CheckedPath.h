#pragma once

#include <filesystem>
#include <string>

#include <zetcore/filesupport/paths/NativePath.h>

namespace zetcore::filesupport {

inline constexpr wchar_t pathSeparator = static_cast<wchar_t>(std::filesystem::path::preferred_separator);

/// False for an empty path, and for one with a zero unit, which would name another file than it says.
inline bool NamesAFile(const std::wstring& path)
{
    return !path.empty() && path.find(L'\0') == std::wstring::npos;
}

/// Throws `file_exception` when the path is empty or holds a zero unit.
std::filesystem::path ToCheckedPath(const std::string& operation, const std::wstring& path);

/// Returns the folder without separators at its end. The root keeps its own.
std::wstring WithoutTrailingSeparators(std::wstring folder);

} // namespace zetcore::filesupport
