#pragma once

#include <string>

namespace zetaudiofilterhost {

/// The path without trailing separators, repeated ones and "." parts; ".." stays, as it may lead through a
/// link.
std::wstring NormalisedFolderPath(const std::wstring& path);

/// The same, in the current folder when it is relative. An empty path stays empty.
std::wstring AbsoluteFolderPath(const std::wstring& path);

/// Compares the texts part by part, as the file system compares names.
bool IsSameFolderPath(const std::wstring& left, const std::wstring& right);
/// True when `path` names something in `folder`, at any depth, or the folder itself.
bool IsInsideFolder(const std::wstring& path, const std::wstring& folder);

} // namespace zetaudiofilterhost
