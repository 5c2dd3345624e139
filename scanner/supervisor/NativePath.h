#pragma once

#include <filesystem>
#include <string>

namespace zetaudiofilterscan {

/// The host's wide path as the standard library's, exact in both directions.
std::filesystem::path ToNativePath(const std::wstring& path);
std::wstring FromNativePath(const std::filesystem::path& path);

} // namespace zetaudiofilterscan
