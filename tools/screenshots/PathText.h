#pragma once

#include <filesystem>
#include <string>

namespace screenshots {

/// The path as the command line and messages take it.
inline std::string Utf8(const std::filesystem::path& path)
{
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

} // namespace screenshots
