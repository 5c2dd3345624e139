#pragma once

#include <filesystem>
#include <string>
#include <type_traits>

#include <zetcore/string/Utf.h>

namespace zetaudiofilterscan {

/// The host's wide path as the standard library's, exact in both directions.
inline std::filesystem::path ToNativePath(const std::wstring& path)
{
    if constexpr (std::is_same_v<std::filesystem::path::value_type, wchar_t>)
        return std::filesystem::path(path);
    else
        return std::filesystem::path(zetcore::string::UTF16to8(path));
}

inline std::wstring FromNativePath(const std::filesystem::path& path)
{
    if constexpr (std::is_same_v<std::filesystem::path::value_type, wchar_t>)
        return path.wstring();
    else
        return zetcore::string::UTF8to16(path.native());
}

} // namespace zetaudiofilterscan
