#pragma once

#include <filesystem>
#include <string>

namespace zetaudiopluginhost {

/// Between the host's wide strings and the system's paths, exact for every path in both directions.
std::filesystem::path NativePath(const std::wstring& path);
std::wstring WidePath(const std::filesystem::path& path);

} // namespace zetaudiopluginhost
